// What loading does, says and refuses, and what it tells the FMU.
#include "fmu_runtime/loaded_fmu.h"
#include "fmu_runtime/repacked_fmu.h"
#include "support/environment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace test_support;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

using Lines = std::vector<std::string>;

/// Loads `fmu` into `directory`, which fails, and answers what it prints on standard error.
std::string errorsOfLoading(const std::string& fmu, const std::string& directory) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(fmiToolsLoadFmu(fmu.c_str(), directory.c_str(), ""), nullptr);
    return testing::internal::GetCapturedStderr();
}

TEST(Load, BeginsWithBothPathsOnStandardErrorAsTheyWereGiven) {
    const TemporaryDirectory directory;
    const std::string place = narrow(directory / "") + "a/../b";
    EXPECT_THAT(errorsOfLoading("no/such.fmu", place),
                StartsWith("FMUPath: no/such.fmu\nWorking directory: " + place + "\n"));
}

TEST(Load, OfALibraryThatCannotBeBoundTellsTheStatus) {
    const TemporaryDirectory directory;
    EXPECT_THAT(
        errorsOfLoading(narrow(fmuPath("scripted_other_platform")), narrow(directory / "unpacked")),
        HasSubstr("\nCould not create the DLL loading mechanism(C-API). Error: -1\n"));
}

TEST(Load, SaysInOneLineWhyItsDirectoryCannotBeUsed) {
    const TemporaryDirectory directory;
    const std::string fmu = narrow(fmuPath("scripted"));
    writeFile(directory / "file", "in the way");
    const std::string inTheWay = narrow(directory / "file");
    const std::string tooLong(5000, 'd');
    for (const auto& place : {inTheWay, tooLong}) {
        const auto errors = lines(errorsOfLoading(fmu, place));
        ASSERT_EQ(errors.size(), 3U) << place;
        EXPECT_THAT(errors[2], StartsWith("Working directory " + place + " cannot be used: "));
        EXPECT_GT(errors[2].size(), place.size() + 40) << "no reason";
    }
}

TEST(Load, RefusesModelExchangeAloneBeforeTheLibraryIsBound) {
    const TemporaryDirectory directory;
    const ScopedEnvironment record("SCRIPTED_FMU_RECORD", narrow(directory / "calls.txt"));
    const RepackedFmu fmu("<CoSimulation", "<UnitDefinitions>",
                          "<ModelExchange modelIdentifier=\"scripted\"/>");
    std::filesystem::remove(directory / "calls.txt");
    EXPECT_THAT(errorsOfLoading(fmu.path() + ".fmu", narrow(directory / "unpacked")),
                Not(HasSubstr("Could not create the DLL loading mechanism")));
    EXPECT_EQ(readFile(directory / "calls.txt"), "");
}

TEST(Load, AllowsASecondInstanceOnlyWhereTheFmuDoes) {
    const TemporaryDirectory directory;
    const RepackedFmu single("canHandleVariable", "canHandleVariable",
                             "canBeInstantiatedOnlyOncePerProcess=\"true\" ");
    LoadedFmu first(single.path());
    const auto refused = errorsOfLoading(single.path() + ".fmu", narrow(directory / "unpacked"));
    EXPECT_THAT(refused, HasSubstr("allows only one instance in a process "
                                   "(canBeInstantiatedOnlyOncePerProcess), and there is one: end "
                                   "that first, or run each in a process of its own\n"));
    const LoadedFmu different("scripted");
    first.cleanUp();
    const LoadedFmu second(single.path());
}

TEST(Load, TakesTheGridOfSimulateFromTheDefaultExperiment) {
    const RepackedFmu archive(
        "<DefaultExperiment", "<ModelVariables>",
        "<DefaultExperiment startTime=\"0.5\" stopTime=\"1\" stepSize=\"0.25\"/>");
    LoadedFmu fmu(archive.path());
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    EXPECT_EQ(fmiToolsSimulate(fmu), 0);
    std::vector<double> times;
    for (const auto& row : fmu.rows()) {
        times.push_back(row.starts_with("time") ? -1.0 : std::stod(row));
    }
    EXPECT_EQ(times, (std::vector{-1.0, 0.5, 0.75, 1.0}));
}

TEST(Load, CallsTheSlaveWithTheFlagsOfASimulationThatOnlyGoesForward) {
    LoadedFmu fmu("scripted");
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    ASSERT_EQ(fmiToolsSimulateToT(fmu, 0.5), 0);
    const std::string calls = fmu.calls();
    EXPECT_THAT(calls, StartsWith("instantiate FMU instance file://"));
    EXPECT_THAT(calls, HasSubstr("/resources logging\n"));         // Not visible.
    EXPECT_THAT(calls, HasSubstr("\nsetupExperiment none 0 none\n" // Tolerance, start, stop.
                                 "enterInitializationMode\nexitInitializationMode\n"
                                 "doStep 0 0.5\n")); // Not to be taken back.
}

TEST(Load, WithARefusedInstantiationLeavesAHandleThatFailsEverywhere) {
    const ScopedEnvironment script("SCRIPTED_FMU_SCRIPT", "instantiate=refuse");
    LoadedFmu fmu("scripted");
    double value = 0.0;
    EXPECT_EQ(fmiToolsSetVariableValue(fmu, "u", "1"), 0);
    EXPECT_EQ(fmiToolsSetRealVariableValue(fmu, "u", 1.0), -202);
    EXPECT_EQ(fmiToolsGetRealVariableValue(fmu, "x", &value), -202);
    EXPECT_EQ(fmiToolsInitialize(fmu), -200);
    EXPECT_EQ(fmiToolsStartInitialization(fmu), -200);
    EXPECT_EQ(fmiToolsEndInitialization(fmu), -200);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 1.0), -201);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.0), -202);
    fmu.cleanUp();
    EXPECT_EQ(fmu.lastLines(1), Lines{"[OK] Closing plugin"});
}

} // namespace
