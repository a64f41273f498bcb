// A host that has set a locale with a decimal comma: numbers are read and written with a point.
#include "fmu_runtime/loaded_fmu.h"
#include "fmu_runtime/log.h"
#include "run_config/parameters_file.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>

namespace {

using namespace test_support;

class HostLocale : public testing::Test {
  protected:
    void SetUp() override {
        for (const char* name : {"de_DE.UTF-8", "German_Germany.1252", "fr_FR.UTF-8"}) {
            if (std::setlocale(LC_ALL, name) != nullptr &&
                *std::localeconv()->decimal_point == ',') {
                return;
            }
        }
        GTEST_SKIP() << "no locale with a decimal comma here";
    }

    void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

TEST_F(HostLocale, WithADecimalCommaChangesNoNumber) {
    LoadedFmu fmu("scripted");
    EXPECT_EQ(fmiToolsSetVariableValue(fmu, "u", "1.5"), 0);
    EXPECT_EQ(fmu.real("u"), 1.5);
    fmu.script("setInteger@1=logf ok c %s %d %g");
    fmiToolsSetIntegerVariableValue(fmu, "selector", 1);
    EXPECT_EQ(fmu.lastLines(2).front(), "[FMU instance][c][OK] text 42 2.5");
    writeLogLine(fmu, "FMISolver", "Error", "None", "Failed to simulate to t=%f", 0.25);
    EXPECT_EQ(fmu.lastLines(1).front(),
              "[FMISolver][None][Error] Failed to simulate to t=0.250000");
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.5), 0);
    EXPECT_TRUE(fmu.rows().back().starts_with("5.0000000000000000e-01,1.0000000000000000e+00,"));
}

TEST_F(HostLocale, WithADecimalCommaLeavesTheVersionOfAParametersFileAlone) {
    const TemporaryDirectory directory;
    for (const auto& [version, isRead] : {std::pair("1.0", true), std::pair("1.5", false)}) {
        writeFile(directory / "p.xml", std::string("<FMUSettings Version='") + version + "'/>");
        run_config::FmuParameterMap parameters;
        EXPECT_EQ(run_config::readParametersFile(narrow(directory / "p.xml"), parameters), isRead);
    }
}

} // namespace
