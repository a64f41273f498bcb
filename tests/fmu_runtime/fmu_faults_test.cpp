// FMUs that misbehave: the scripted binary with other scripts and other model descriptions.
#include "fmu_runtime/loaded_fmu.h"
#include "fmu_runtime/repacked_fmu.h"
#include "support/environment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <system_error>

namespace {

using namespace test_support;
using testing::Contains;
using testing::HasSubstr;
using testing::StartsWith;

/// The scripted FMU with these model variables, loaded.
class FmuWithVariables {
  public:
    explicit FmuWithVariables(const std::string& variables)
        : archive_("<ModelVariables>", "</fmiModelDescription>",
                   "<ModelVariables>" + variables + "</ModelVariables><ModelStructure/>"),
          fmu_(archive_.path()) {}

    LoadedFmu& operator*() { return fmu_; }

  private:
    RepackedFmu archive_;
    LoadedFmu fmu_;
};

std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        result += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '"' ? "&quot;" : std::string(1, c);
    }
    return result;
}

std::string realVariable(std::string_view name, std::uint32_t reference) {
    return "<ScalarVariable name=\"" + escaped(name) + "\" valueReference=\"" +
           std::to_string(reference) +
           "\" causality=\"output\" variability=\"continuous\"><Real/></ScalarVariable>";
}

TEST(ModelDescription, WithoutVariablesGivesRowsOfTheTimeAlone) {
    FmuWithVariables repacked("");
    LoadedFmu& fmu = *repacked;
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.5), 0);
    EXPECT_EQ(readFile(fmu.resultsFile()), "time[s]\n5.0000000000000000e-01\n");
    EXPECT_EQ(fmiToolsSetRealVariableValue(fmu, "u", 1.0), -202);
}

TEST(ModelDescription, MayHaveAHundredThousandVariables) {
    constexpr std::size_t count = 100'000;
    std::string variables;
    for (std::size_t index = 0; index < count; ++index) {
        variables += realVariable("body[" + std::to_string(index) + "].x",
                                  static_cast<std::uint32_t>(index % 14));
    }
    FmuWithVariables repacked(variables);
    LoadedFmu& fmu = *repacked;
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    EXPECT_EQ(fmiToolsSetRealVariableValue(fmu, "body[99988].x", 2.5), 0); // The reference of gain.
    EXPECT_EQ(fmu.real("body[0].x"), 2.5);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.1), 0);
    const auto rows = fmu.rows();
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(std::ranges::count(rows[0], ','), count);
    EXPECT_EQ(std::ranges::count(rows[1], ','), count);
}

TEST(ModelDescription, MayNameVariablesInAnyWay) {
    const std::vector<std::string> names{"a[1,2].der(x)",           "'quoted name, with comma'",
                                         "a \"double\" quote",      "100%s %n %d %%",
                                         "Reifenl\xC3\xA4ngskraft", "\xE2\x82\xAC & <more>",
                                         std::string(10'000, 'n')};
    std::string variables;
    std::string header = "time[s]";
    for (const auto& name : names) {
        variables += realVariable(name, 3);
        header += ',' + name + "[-]";
    }
    FmuWithVariables repacked(variables);
    LoadedFmu& fmu = *repacked;
    EXPECT_EQ(fmu.rows().at(0), header);
    for (const auto& name : names) {
        EXPECT_EQ(fmiToolsSetRealVariableValue(fmu, name.c_str(), 1.5), 0);
        EXPECT_EQ(fmu.real(name.c_str()), 1.5);
        const std::string message = "Fetched output " + name + "=1.5000000000000000e+00";
        EXPECT_EQ(fmu.lastLines(1).front(), "[OK] " + message.substr(0, 255));
    }
    EXPECT_EQ(fmiToolsSetRealVariableValue(fmu, std::string(100'000, '?').c_str(), 1.0), -202);
}

TEST(ValueReference, ThatTheFmuDoesNotKnowFailsTheAccess) {
    FmuWithVariables repacked(realVariable("u", 2) + realVariable("far", 4294967295U) +
                              realVariable("gain", 0));
    LoadedFmu& fmu = *repacked;
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    double value = 7.0;
    EXPECT_EQ(fmiToolsGetRealVariableValue(fmu, "far", &value), -202);
    EXPECT_EQ(value, 7.0);
    EXPECT_EQ(fmiToolsSetRealVariableValue(fmu, "far", 1.0), -202);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.5), -202);
    EXPECT_EQ(fmu.rows().at(1), "5.0000000000000000e-01,0.0000000000000000e+00,");
}

TEST(Logger, MayBeCalledFromAnywhereWithAnything) {
    const TemporaryDirectory directory;
    const ScopedEnvironment record("SCRIPTED_FMU_RECORD", narrow(directory / "calls.txt"));
    const ScopedEnvironment script(
        "SCRIPTED_FMU_SCRIPT",
        "any=logUnnamed 99 null null; any=logLong error c 1000000; any=logf fatal %s%n "
        "%s%s%s%n%99999999d;"
        "any=stepFinished 42; any=stepFinished discard; terminate=error; freeInstance=-7");
    testing::internal::CaptureStdout();
    {
        LoadedFmu fmu("scripted");
        EXPECT_EQ(fmiToolsInitialize(fmu), 0);
        EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.5), 0);
        EXPECT_EQ(fmu.real("x"), 0.0);
        fmu.cleanUp();
        const auto log = fmu.log();
        EXPECT_THAT(log, Contains("[(null)][(null)][Unknown] (null)"));
        EXPECT_EQ(fmu.rows().size(), 2U);
        EXPECT_THAT(log.back(), StartsWith("[FMU instance][%s%n][Fatal] ")); // From freeInstance.
    }
    const std::string output = testing::internal::GetCapturedStdout();
    EXPECT_THAT(output, HasSubstr("[(null)][(null)][Unknown] (null)")); // From instantiate.
    EXPECT_THAT(output, HasSubstr("stepFinished is called with fmiStatus = "));
    const auto calls = lines(readFile(directory / "calls.txt"));
    EXPECT_EQ(std::ranges::count(calls, "terminate"), 1);
    EXPECT_EQ(std::ranges::count(calls, "freeInstance"), 1);
    EXPECT_EQ(calls[calls.size() - 2], "freeInstance");
    EXPECT_EQ(calls.back(), "unload");
}

TEST(Logger, MayBeCalledFromThreadsOfTheFmu) {
    LoadedFmu fmu("scripted");
    fmu.script("doStep=logAtOnce ok c 500");
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.5), 0);
    const auto log = fmu.log();
    for (int number = 1; number <= 500; ++number) {
        const std::string line =
            "[FMU instance][c][OK] message " + std::to_string(number) + " of a thread";
        EXPECT_EQ(std::ranges::count(log, line), 4) << number;
    }
    EXPECT_EQ(std::ranges::count_if(log, [](auto& line) { return line.starts_with("[FMI"); }),
              static_cast<std::ptrdiff_t>(log.size()) - 2000);
}

TEST(Exception, ThatLeavesAFunctionOfTheFmuIsTheFailureOfThatCall) {
    LoadedFmu fmu("scripted");
    fmu.script("doStep@2=throw; getReal(x)@1=throw; setReal(u)=throw; getString(echo)=throw");
    EXPECT_EQ(fmiToolsSetRealVariableValue(fmu, "u", 1.0), -202);
    EXPECT_EQ(fmu.lastLines(1).front(), "[Error] Failed to set input u");
    double x = 7.0;
    EXPECT_EQ(fmiToolsGetRealVariableValue(fmu, "x", &x), -202);
    EXPECT_EQ(x, 7.0);
    EXPECT_EQ(fmu.lastLines(1).front(), "[Error] Failed to get output x");
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    fmiToolsSetEndTime(fmu, 0.35);
    EXPECT_EQ(fmiToolsSimulate(fmu), 0); // 0, 0.1, 0.2 (throws), 0.3
    EXPECT_EQ(std::ranges::count(fmu.log(), "[FMITools][None][Error] Attempted step failed"), 1);
    EXPECT_EQ(fmu.rows().size(), 4U);
    EXPECT_EQ(std::stod(fmu.rows().back()), 0.1 + 0.1 + 0.1);
}

TEST(Exception, OfInitialisationIsToldAsItsFailure) {
    for (const char* call :
         {"setupExperiment", "enterInitializationMode", "exitInitializationMode"}) {
        LoadedFmu fmu("scripted");
        fmu.script((std::string(call) + "=throw").c_str());
        EXPECT_EQ(fmiToolsInitialize(fmu), -200) << call;
        EXPECT_EQ(fmu.lastLines(1).front(), "[Error] Failed to initialise FMU") << call;
    }
}

TEST(Exception, OfInstantiateYieldsAHandleThatFailsEverywhere) {
    const ScopedEnvironment script("SCRIPTED_FMU_SCRIPT", "instantiate=throw");
    LoadedFmu fmu("scripted");
    EXPECT_EQ(fmiToolsSetRealVariableValue(fmu, "u", 1.0), -202);
    EXPECT_EQ(fmiToolsInitialize(fmu), -200);
}

TEST(Exception, OfTheLastCallsSkipsNothingOfTheCleanUp) {
    const TemporaryDirectory directory;
    const ScopedEnvironment record("SCRIPTED_FMU_RECORD", narrow(directory / "calls.txt"));
    LoadedFmu fmu("scripted");
    fmu.script("terminate=throw; freeInstance=throw");
    testing::internal::CaptureStdout();
    fmu.cleanUp();
    EXPECT_THAT(testing::internal::GetCapturedStdout(), HasSubstr("[OK] Closed plugin\n"));
    const auto calls = lines(readFile(directory / "calls.txt"));
    const std::vector<std::string> end(calls.end() - 3, calls.end());
    EXPECT_EQ(end, (std::vector<std::string>{"terminate", "freeInstance", "unload"}));
}

TEST(Numbers, MayBeNoneInEveryPlace) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    LoadedFmu fmu("scripted");
    fmu.script("getReal=value -nan");
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    fmiToolsSetStartTime(fmu, nan);
    EXPECT_EQ(fmiToolsSimulate(fmu), 0);
    EXPECT_EQ(fmiToolsSetRealVariableValue(fmu, "u", nan), 0);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, nan), 0); // No step: it leads nowhere.
    EXPECT_EQ(fmiToolsSimulateToT(fmu, -infinity), 0);
    EXPECT_EQ(fmu.rows().back().substr(0, 27), "0.0000000000000000e+00,-nan");
    EXPECT_EQ(fmiToolsSimulateToT(fmu, infinity), 0);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, infinity), 0);
    EXPECT_EQ(fmu.rows().back().substr(0, 4), "inf,");
    EXPECT_THAT(fmu.log(), Contains("[FMITools][None][OK] Attempting step to t=nan"));
}

TEST(Load, RefusesPlacesThatCannotBeUnpackedInto) {
    const TemporaryDirectory directory;
    const std::string fmu = narrow(fmuPath("scripted"));
    writeFile(directory / "file", "in the way");
    for (const char* place : {"file", "file/below"}) {
        EXPECT_EQ(fmiToolsLoadFmu(fmu.c_str(), narrow(directory / place).c_str(), ""), nullptr);
    }
    std::filesystem::create_directories(directory / "taken" / "modelDescription.xml" / "x");
    EXPECT_EQ(fmiToolsLoadFmu(fmu.c_str(), narrow(directory / "taken").c_str(), ""), nullptr);
    EXPECT_EQ(readFile(directory / "file"), "in the way");
}

TEST(Run, OutlivesItsUnpackedFiles) {
    LoadedFmu fmu("scripted");
    std::error_code error; // Windows keeps what is loaded.
    std::filesystem::remove_all(fmu.unpacked(), error);
    EXPECT_EQ(fmiToolsInitialize(fmu), 0);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.5), 0);
    EXPECT_EQ(fmu.rows().size(), 2U);
}

} // namespace
