// What ends or stalls a program, and files that cannot be written: never status 0, and never without
// a word.
#include "support/archive_writer.h"
#include "support/files.h"
#include "support/run_program.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace {

using test_support::fmuPath;
using test_support::narrow;
using test_support::ProgramResult;
using test_support::readFile;
using test_support::RunOptions;
using Arguments = std::vector<std::string>;

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

class FalseSuccess : public testing::Test {
  protected:
    ProgramResult run(const std::string& program, const Arguments& arguments,
                      const std::string& script = "") {
        std::filesystem::create_directory(directory / "temporary");
        const std::string temporary = narrow(directory / "temporary");
        RunOptions options{.workingDirectory = directory.path()};
        options.environment = {
            {"SCRIPTED_FMU_SCRIPT", script}, {"TMPDIR", temporary}, {"TEMP", temporary}};
        return runProgram(test_support::programPath(program), arguments, options);
    }

    /// A run of scripted.fmu by either program.
    ProgramResult runScripted(const std::string& program, Arguments arguments,
                              const std::string& script = "") {
        const std::string fmu = narrow(directory / "scripted.fmu");
        const Arguments own = program == "fmu_run" ? Arguments{fmu} : Arguments{"--command-line",
                                                                                '"' + fmu + '"',
                                                                                "--open-loop",
                                                                                "--step-size",
                                                                                "0.1",
                                                                                "--stop-time",
                                                                                "1"};
        arguments.insert(arguments.begin(), own.begin(), own.end());
        return run(program, arguments, script);
    }

    FalseSuccess() { std::filesystem::copy_file(fmuPath("scripted"), directory / "scripted.fmu"); }

    test_support::TemporaryDirectory directory;
};

TEST_F(FalseSuccess, AnEndOfTheProcessInACallIsReportedAsWhatItIs) {
    struct Case {
        std::string script, program, what, call;
    };

    const Case cases[] = {
        {"doStep@3=exitOrderly 0", "fmu_run", "called exit", "in fmi2DoStep"},
        {"doStep@3=abort", "fmu_run", "aborted", "in fmi2DoStep"},
        {"doStep@3=crash", "fmu_run", "crashed (", "in fmi2DoStep"},
        {"doStep@3=sleep 60", "fmu_run", "did not return within --timeout", "in fmi2DoStep"},
        {"instantiate=exitOrderly 0", "fmu_run", "called exit", "in fmi2Instantiate"},
        {"instantiate=sleep 60", "fmu_run", "did not return", "in fmi2Instantiate"},
        {"exitInitializationMode=crash", "fmu_run", "crashed", "in fmi2ExitInitializationMode"},
        {"setReal(u)=abort", "fmu_run", "aborted", "in fmi2SetReal"},
        {"terminate=abort", "fmu_run", "aborted", "in fmi2Terminate"},
        {"doStep@3=exitOrderly 0", "cosim_host", "called exit", "in solveTo (fmi2DoStep)"},
        {"doStep@3=abort", "cosim_host", "aborted", "in solveTo (fmi2DoStep)"},
        {"doStep@3=crash", "cosim_host", "crashed (", "in solveTo (fmi2DoStep)"},
        {"doStep@3=sleep 60", "cosim_host", "did not return within --timeout", "in solveTo"},
        {"instantiate=crash", "cosim_host", "crashed", "in setUp (fmi2Instantiate)"}};
    for (const auto& [script, program, what, call] : cases) {
        Arguments arguments{"--timeout", contains(script, "sleep") ? "0.2" : "60"};
        if (program == "fmu_run") {
            arguments.insert(arguments.end(), {"--start-value", "u", "1"});
        }
        const auto result = runScripted(program, arguments, script);
        const std::string about = program + " " + script + "\n" + result.error;
        EXPECT_EQ(result.exitStatus, 1) << about;
        EXPECT_FALSE(result.crashed) << about;
        EXPECT_TRUE(contains(result.error, program + ": ")) << about;
        EXPECT_TRUE(contains(result.error, what)) << about;
        EXPECT_TRUE(contains(result.error, call)) << about;
        const bool inThirdStep = contains(script, "doStep");
        EXPECT_TRUE(contains(result.error, inThirdStep ? " at t = 0.2 s;" : " at t = ")) << about;
        EXPECT_TRUE(!inThirdStep || contains(result.error, "Attempting step to t=3.")) << about;
        if (test_support::canInterrupt) { // Windows keeps the files of a library that is loaded.
            EXPECT_TRUE(std::filesystem::is_empty(directory / "temporary")) << about;
        }
    }
}

TEST_F(FalseSuccess, AModelDescriptionThatCannotBeReadIsToldWithItsLineAndReason) {
    const std::string broken = narrow(directory / "broken.fmu");
    test_support::writeArchive(
        directory / "broken.fmu",
        {{"modelDescription.xml", "<fmiModelDescription fmiVersion=\"2.0\"\nguid=>"}});
    const std::pair<std::string, Arguments> runs[] = {
        {"fmu_run", {broken}},
        {"cosim_host", {"--command-line", '"' + broken + '"', "--open-loop"}}};
    for (const auto& [program, arguments] : runs) {
        const auto result = run(program, arguments, "");
        EXPECT_NE(result.exitStatus, 0) << program;
        EXPECT_TRUE(contains(result.error, "Parse error at line 2: not well-formed"))
            << result.error;
    }
}

TEST_F(FalseSuccess, AFullDiskIsNamedWithTheFile) {
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "This system has no device that is full.";
    }

    struct Case {
        std::string program;
        Arguments arguments;
        std::string named;
    };

    const Case cases[] = {{"fmu_run", {"--output-file", "/dev/full"}, "results file /dev/full: No"},
                          {"fmu_run", {"--log-file", "/dev/full"}, "log file '/dev/full'"},
                          {"cosim_host", {"--output-file", "/dev/full"}, "'/dev/full': No space"}};
    for (const auto& [program, arguments, named] : cases) {
        const auto result = runScripted(program, arguments);
        EXPECT_EQ(result.exitStatus, 1) << named;
        EXPECT_TRUE(contains(result.error, named)) << result.error;
        EXPECT_TRUE(contains(result.error, "No space left on device")) << result.error;
    }
    const auto shell = test_support::runProgram(
        "/bin/sh", {"-c", "'" + narrow(test_support::programPath("fmu_run")) + "' --info '" +
                              narrow(fmuPath("tyre")) + "' >/dev/full"});
    EXPECT_EQ(shell.exitStatus, 1);
    EXPECT_TRUE(contains(shell.error, "standard output: No space left on device")) << shell.error;
    std::filesystem::remove(directory / "scripted.out");
    std::filesystem::create_symlink("/dev/full", directory / "scripted.out");
    const auto logIsFull = runScripted("cosim_host", {});
    EXPECT_EQ(logIsFull.exitStatus, 1);
    EXPECT_TRUE(contains(logIsFull.error, "Failed to write log file")) << logIsFull.error;
    EXPECT_TRUE(contains(logIsFull.error, "breaks off")) << logIsFull.error;
}

TEST_F(FalseSuccess, TheHostCountsWhatTheLogComplainsOf) {
    test_support::writeFile(directory / "broken.xml", "<FMUSettings");
    for (const bool strict : {false, true}) {
        Arguments arguments{"--command-line", "scripted.fmu -parameter nobody 1 -parameter noone 2",
                            "--open-loop", "--stop-time", "0.01"};
        if (strict) {
            arguments.emplace_back("--strict");
        }
        const auto result = run("cosim_host", arguments);
        EXPECT_EQ(result.exitStatus, strict ? 1 : 0) << result.error;
        EXPECT_TRUE(contains(result.error, "cosim_host: 2 warnings and 0 errors in the log"))
            << result.error;
        EXPECT_TRUE(contains(result.error, "  first warning: [")) << result.error;
        EXPECT_FALSE(contains(result.error, "first error")) << result.error;
        arguments[1] = "scripted.fmu -parameterfile broken.xml";
        const auto broken = run("cosim_host", arguments);
        EXPECT_EQ(broken.exitStatus, strict ? 1 : 0) << broken.error;
        EXPECT_TRUE(contains(broken.error, "parameters file 'broken.xml' cannot be used"))
            << broken.error;
    }
}

TEST_F(FalseSuccess, ARowOfAFailedOutputIsNotRecorded) {
    const auto result = runScripted(
        "cosim_host", {"--output", "y", "--output-file", "received.csv"}, "getReal(y)@4=error");
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_TRUE(contains(result.error, "failure code")) << result.error;
    EXPECT_FALSE(contains(result.output, " at 0 s to ")) << "no table of a failed run";
}

} // namespace
