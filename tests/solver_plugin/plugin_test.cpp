#include "create_solver.h"
#include "host/solver.h"
#include "host/tuple_array.h"
#include "reference_host/log_sink.h"
#include "reference_host/simulation.h"
#include "support/environment.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;
using Lines = std::vector<std::string>;

/// A host with one run of an FMU in a directory of its own.
class HostRun {
  public:
    explicit HostRun(const std::string& fmu, const std::string& options = "") : name_(fmu) {
        host.setWorkingDirectory(test_support::narrow(directory.path()));
        host.setModelFilePath(test_support::narrow(directory / "case.xml"));
        host.setCommandLine("\"" + test_support::narrow(test_support::fmuPath(fmu)) + "\" " +
                            options);
    }

    void setUp() {
        solver->parseCommandLine(host.modelManager());
        solver->setUp(host.modelManager());
    }

    void begin() {
        setUp();
        solver->applyInitialInputs(0);
        solver->start();
        solver->writeInitialOutputs(0);
    }

    /// Calls every operation and notes the failure code after each, a digit each.
    std::string codesOfAll() {
        std::string codes;
        const auto note = [&] { codes += std::to_string(host.failureCode()); };
        setUp(), note();
        solver->applyInitialInputs(0), note();
        solver->start(), note();
        solver->writeInitialOutputs(0), note();
        solver->applyInputs(0.1), note();
        solver->solveTo(0.1), note();
        solver->writeOutputs(0.1), note();
        solver->terminate(), note();
        return codes;
    }

    void step(double time) {
        solver->applyInputs(time);
        solver->solveTo(time);
        solver->writeOutputs(time);
    }

    /// The lines of the log, "level message", of the module, or of all when it is empty.
    [[nodiscard]] Lines log(const std::string& module = "FMISolver") const {
        Lines result;
        for (const auto& line : test_support::lines(read(".out"))) {
            const auto start = line.find("[" + module + "][None][");
            if (start != std::string::npos) {
                auto text = line.substr(start + module.size() + 9);
                result.push_back(text.replace(text.find("] "), 2, " "));
            }
        }
        return result;
    }

    /// The names in the lines that begin with `verb` and end with "=value", or name a failure.
    [[nodiscard]] std::string transfers(const std::string& verb) const {
        std::string names;
        for (const auto& line : log("FMITools")) {
            if (line.starts_with(verb)) {
                const auto name = line.substr(verb.size(), line.find('=') - verb.size());
                names += (names.empty() ? "" : " ") + name;
            }
        }
        return names;
    }

    [[nodiscard]] std::string read(const std::string& ending) const {
        return test_support::readFile(directory / (name_ + ending));
    }

    test_support::TemporaryDirectory directory;
    reference_host::Simulation host;
    std::unique_ptr<Solver> solver{createSolver()};

  private:
    std::string name_;
};

bool contains(const Lines& lines, const std::string& line) {
    return std::ranges::find(lines, line) != lines.end();
}

/// What is thrown, by its text.
template <typename Operation>
std::string errorOf(Operation operation) {
    try {
        operation();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing was thrown";
}

TEST(Factory, TellsTheBuildOnTheConsoleAndTheBannerInTheHostsLog) {
    CaptureStdout();
    const std::unique_ptr<Solver> solver(createSolver());
    const auto console = test_support::lines(GetCapturedStdout());
    ASSERT_NE(solver, nullptr);
    ASSERT_EQ(console.size(), 2U);
    EXPECT_TRUE(console[0].starts_with("PluginFMISolver: " PLUGIN_VERSION "; Compiled on "));
    EXPECT_TRUE(console[1].starts_with("PluginFMISolver: Compilation Environment: "));

    Lines banner;
    reference_host::setLogSink([&](Logger::Level level, const std::string& text) {
        EXPECT_EQ(level, Logger::info);
        EXPECT_EQ(static_cast<int>(level), 3);
        EXPECT_TRUE(text.starts_with("FMISolver "));
        banner.push_back("PluginFMISolver: " + text.substr(10));
    });
    solver->printBanner();
    reference_host::setLogSink({});
    EXPECT_EQ(banner, console);
}

TEST(FullRun, CarriesTheFmuThroughEveryOperation) {
    HostRun run("scripted", "-parameter gain 2");
    run.host.addCoupledCondition("u", 1).setValue(0, 0, 3.0);
    auto& force = run.host.addCoupledCondition("F", 3);
    for (int i = 0; i < 3; ++i) {
        force.setValue(0, i, i + 1.0);
    }
    auto& x = run.host.addOutputResult("x", "Length", 1);
    auto& pressure = run.host.addOutputResult("P[3]", "Pressure", 1);
    CaptureStdout();
    run.begin();
    EXPECT_EQ(pressure.getValue(0, 0), 3.0);
    for (int i = 1; i <= 10; ++i) {
        run.step(i * 0.1);
        EXPECT_NEAR(x.getValue(0, 0), 6.0 * i * 0.1, 1e-12);
    }
    const auto log = run.log();
    run.solver->terminate();
    const auto console = GetCapturedStdout();

    EXPECT_EQ(run.host.failureCode(), 0);
    ASSERT_EQ(log.size(), 10U);
    EXPECT_EQ(log[0], "OK FMI plugin version: " PLUGIN_VERSION);
    EXPECT_EQ(log[1].find("OK FMI plugin build ID: "), 0U);
    EXPECT_EQ(log[1].size(), std::string("OK FMI plugin build ID: 0123456").size());
    EXPECT_EQ(log[2].find("OK FMI plugin build date: "), 0U);
    EXPECT_EQ(log[3].find("OK FMU generation tool: "), 0U);
    EXPECT_EQ(Lines(log.begin() + 4, log.end()),
              (Lines{"OK Starting plugin", "OK Setting parameter gain=2", "OK Checking FMUType",
                     "OK Expecting input model (FMU) of type: Dynamodeler",
                     "OK Found Dynamodeler FMU.", "OK Initialised FMU"}));
    EXPECT_EQ(test_support::lines(run.read(".csv")).size(), 11U);
    EXPECT_NE(console.find("FMISolver: Running in standalone mode\n"), std::string::npos);
    EXPECT_NE(console.find("Closed plugin"), std::string::npos);

    run.step(2.0);
    EXPECT_EQ(run.host.failureCode(), 5);
    run.solver->terminate();
}

TEST(FailureCodes, EachHasItsOwnCause) {
    const struct {
        std::string fmu, options, condition, output;
        const char* codes; ///< After setUp, and after each of the following operations.
    } cases[] = {
        {"scripted", "", "u", "x", "00000000"},
        {"scripted", "", "none", "x", "04445555"},
        {"scripted", "", "u", "none", "00044433"},
        {"scripted", "-parameter script enterInitializationMode=error", "u", "x", "00444555"},
        {"scripted", "-parameter script exitInitializationMode=error", "u", "x", "00000555"},
        {"scripted", "-parameter script doStep=discard", "u", "x", "00000555"},
        {"scripted", "-parameter script getReal(x)@2-=fatal", "u", "x", "00000533"},
    };

    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.options + expected.condition + expected.output);
        HostRun run(expected.fmu, expected.options);
        run.host.addCoupledCondition(expected.condition, 1);
        run.host.addOutputResult(expected.output, "", 1);
        EXPECT_EQ(run.codesOfAll(), expected.codes);
    }
}

TEST(FailureCodes, OfSetUpTakesTheSolversOwnWayToTheSettings) {
    HostRun run("no_such");
    run.host.withholdSolution();
    run.setUp();
    EXPECT_EQ(run.host.failureCode(), 4);
    CaptureStdout();
    run.solver->solveTo(0.1);
    EXPECT_NE(GetCapturedStdout().find("[Error] solveTo: the host gave no solution\n"),
              std::string::npos);
    EXPECT_EQ(run.host.failureCode(), 4);
}

TEST(FailureCodes, StayWhenLaterOperationsSucceed) {
    HostRun run("scripted", "-parameter script exitInitializationMode@1=error;doStep@1=error");
    auto& x = run.host.addOutputResult("x", "", 1);
    run.host.addCoupledCondition("u", 1).setValue(0, 0, 1.0);
    run.begin();
    for (const double time : {0.1, 0.25, 0.5}) {
        run.step(time);
    }
    EXPECT_EQ(x.getValue(0, 0), 0.5);
    EXPECT_EQ(run.host.failureCode(), 5);
    const auto log = run.log();
    EXPECT_EQ(Lines(log.end() - 3, log.end()),
              (Lines{"Error Failed to initialise FMU", "OK Initialised FMU",
                     "Error Failed to simulate to t=0.250000"}));
    run.solver->terminate();
}

TEST(States, RefuseWhatIsNotDue) {
    HostRun run("scripted");
    run.setUp();
    run.solver->solveTo(0.1);
    EXPECT_EQ(run.host.failureCode(), 5);
    EXPECT_EQ(run.log().back(), "Error Cannot solve as solver state is: Solver created");
    run.solver->start();
    const auto lines = run.log().size();
    run.solver->start();
    EXPECT_EQ(run.log().size(), lines);
    run.solver->solveTo(0.1);
    run.solver->start();
    EXPECT_EQ(run.host.failureCode(), 4);
    EXPECT_EQ(run.log().back(), "Error Cannot start solver as state is: Solver simulating");
    run.solver->terminate();
}

TEST(KindCheck, ComparesTheFmuWithItsDeclaration) {
    const std::string mismatch = "Unexpected FMUType. FMU does not match type: ";
    const std::string none = "nothing was thrown";
    const std::string dynamodeler = "OK Found Dynamodeler FMU.";
    const std::string missing = "any computation errors.";
    const std::string unexpected = "(-fmutype) in the XML.";
    const std::string wrong = "interface contain inconsistent identification.";

    const struct {
        std::string fmu, options, thrown, lastWords;
        std::ptrdiff_t lines; ///< After "Checking FMUType".
    } cases[] = {
        {"scripted", "", none, dynamodeler, 2},
        {"scripted", "-fmutype ftire", none, dynamodeler, 2},
        {"scripted", "-fmutype FTIRE", mismatch + "FTIRE", missing, 9},
        {"tyre", "-fmutype FTIRE", none, "OK Found FTIRE FMU.", 2},
        {"tyre", "", mismatch, unexpected, 3},
        {"tyre", "-fmutype KIND2", mismatch + "KIND2", unexpected, 3},
        {"tyre", "-fmutype FTIRE -parameter fTireWorld.xmxKey 1", mismatch + "FTIRE", wrong, 2},
    };

    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.fmu + expected.options);
        HostRun run(expected.fmu, expected.options);
        run.setUp();
        EXPECT_EQ(errorOf([&] { run.solver->start(); }), expected.thrown);
        const auto log = run.log();
        EXPECT_TRUE(log.back().ends_with(expected.lastWords)) << log.back();
        EXPECT_EQ(log.end() - std::ranges::find(log, "OK Checking FMUType"), expected.lines + 1);
        EXPECT_EQ(run.host.failureCode(), 0);
        run.solver->solveTo(0.1);
        EXPECT_EQ(run.log().back() == "Error Cannot solve as solver state is: Solver created",
                  expected.thrown != none);
        run.solver->terminate();
    }
}

TEST(KindCheck, FollowsTheStartOfInitialisation) {
    HostRun run("scripted", "-fmutype FTIRE -parameter script enterInitializationMode=error");
    run.setUp();
    EXPECT_EQ(errorOf([&] { run.solver->start(); }), "nothing was thrown");
    EXPECT_EQ(run.host.failureCode(), 4);
    EXPECT_EQ(run.log().back(), "Error Failed to initialise FMU");
    run.solver->terminate();
}

TEST(Parameters, AreLoggedUpToTheLongestMessage) {
    HostRun run("scripted", "-parameter label " + std::string(300, 'v'));
    run.setUp();
    run.solver->start();
    const std::string start = "OK Setting parameter label=";
    const std::size_t longest = std::string("OK ").size() + 255;
    EXPECT_TRUE(contains(run.log(), start + std::string(longest - start.size(), 'v')));
    run.solver->terminate();
}

TEST(Parameters, OfAFileAreAppliedInTheOrderOfTheirNames) {
    const test_support::TemporaryDirectory directory("with blanks");
    test_support::writeFile(directory / "p.xml",
                            "<FMUSettings Version='1'><Parameters>"
                            "<Parameter Name='label' Type='String'>two words</Parameter>"
                            "<Parameter Name='none' Type='Real'>1</Parameter>"
                            "<Parameter Name='gain' Type='Real'>2.5</Parameter>"
                            "</Parameters></FMUSettings>");
    HostRun run("scripted", "-parameter mass 9 -parameterfile \"" +
                                test_support::narrow(directory / "p.xml") + "\"");
    run.setUp();
    run.solver->start();
    const auto log = run.log();
    EXPECT_EQ(Lines(log.begin() + 5, log.begin() + 10),
              (Lines{"OK Setting parameter gain=2.5", "OK Setting parameter label=two words",
                     "OK Setting parameter none=1", "Warning Failed to set parameter",
                     "OK Checking FMUType"}));
    EXPECT_EQ(run.host.failureCode(), 0);
    run.solver->terminate();
}

TEST(Inputs, FollowOptionAndSize) {
    const struct {
        const char* option;
        const char* names;
        int size;
        bool failed;
    } cases[] = {
        {"", "F", 1, true},
        {"", "F[1] F[2] F[3]", 3, false},
        {"", "F[1] F[2] F[3]", 2, false},
        {"", "F[1] F[2] F[3]", 6, false},
        {"", "F[1] F[2] F[3]", 0, false},
        {"-noarrayinputs", "F", 3, true},
    };

    for (const auto& expected : cases) {
        HostRun run("scripted", expected.option);
        auto& force = run.host.addCoupledCondition("F", expected.size);
        for (int i = 0; i < 3; ++i) {
            force.setValue(0, i, i + 1.0);
        }
        run.setUp();
        run.solver->applyInitialInputs(0);
        EXPECT_EQ(run.transfers(expected.failed ? "Error Could not find input " : "OK Set input "),
                  expected.names);
        EXPECT_EQ(run.host.failureCode(), expected.failed ? 4 : 0);
        run.solver->terminate();
    }
    HostRun scalar("scripted", "-noarrayinputs");
    scalar.host.addCoupledCondition("u", 3).setValue(0, 0, 5.0);
    scalar.setUp();
    scalar.solver->applyInputs(0.0);
    EXPECT_TRUE(contains(scalar.log("FMITools"), "OK Set input u=5.0000000000000000e+00"));
    scalar.solver->terminate();
}

TEST(Outputs, FollowOptionAndQuantity) {
    const struct {
        std::string option, name, quantity, names;
        std::vector<double> values;
    } cases[] = {
        {"", "P", "Pressure", "P", {1.0, -1.0, -1.0}},
        {"", "P", "PressureGlobal", "P", {1.0, -1.0, -1.0}},
        {"-outputsarearrays", "P", "Pressure", "P[1] P[2] P[3]", {1.0, 2.0, 3.0}},
        {"-outputsarearrays", "P", "PressureGlobal", "P[1]", {1.0, -1.0, -1.0}},
        {"-outputsarearrays", "P", "Pressureglobal", "P[1] P[2] P[3]", {1.0, 2.0, 3.0}},
        {"-outputsarearrays", "P", "PressureGlobal ", "P[1] P[2] P[3]", {1.0, 2.0, 3.0}},
        {"-outputsarearrays", "Q", "Flow", "Q[1]", {0.0, -1.0, -1.0}},
    };

    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.option + expected.quantity);
        HostRun run("scripted", expected.option);
        auto& force = run.host.addCoupledCondition("F", 3);
        auto& output = run.host.addOutputResult(expected.name, expected.quantity, 3);
        for (int i = 0; i < 3; ++i) {
            force.setValue(0, i, i + 1.0);
            output.setValue(0, i, -1.0);
        }
        run.begin();
        EXPECT_EQ(run.transfers("OK Fetched output "), expected.names);
        EXPECT_EQ(
            (std::vector{output.getValue(0, 0), output.getValue(0, 1), output.getValue(0, 2)}),
            expected.values);
        run.solver->terminate();
    }
}

TEST(Transfers, EndAtTheFirstMissingVariable) {
    HostRun run("scripted");
    for (const char* name : {"u", "none", "rawInput"}) {
        run.host.addCoupledCondition(name, 1).setValue(0, 0, 2.0);
    }
    auto& first = run.host.addOutputResult("Q[1]", "", 1);
    run.host.addOutputResult("nothing", "", 1).setValue(0, 0, -1.0);
    auto& last = run.host.addOutputResult("x", "", 1);
    last.setValue(0, 0, -1.0);
    run.begin();
    run.step(0.1);
    EXPECT_EQ(run.transfers("OK Set input "), "u u");
    EXPECT_EQ(run.transfers("Error Could not find input "), "none none");
    EXPECT_EQ(run.transfers("Error Could not find output "), "nothing nothing");
    EXPECT_EQ(first.getValue(0, 0), 2.0);
    EXPECT_EQ(last.getValue(0, 0), -1.0);
    EXPECT_EQ(run.host.failureCode(), 3);
    run.solver->terminate();
}

TEST(SkipSwitches, SilenceTheStepOperationsOnly) {
    for (const bool byOption : {true, false}) {
        HostRun run("scripted");
        run.host.addCoupledCondition("none", 1);
        run.host.addOutputResult("none", "", 1);
        run.setUp();
        run.solver->start();
        const auto lines = run.log("FMITools").size();
        run.host.setStepSkipOption(byOption);
        run.host.setStepSkipParameter(!byOption);
        run.step(0.1);
        EXPECT_EQ(run.host.failureCode(), 0);
        EXPECT_EQ(run.log("FMITools").size(), lines);
        EXPECT_FALSE(contains(run.log(), "OK Initialised FMU"));
        run.solver->applyInitialInputs(0);
        EXPECT_EQ(run.host.failureCode(), 4);
        run.solver->terminate();
    }
}

TEST(FailedSetUp, LeavesEveryOperationCallable) {
    HostRun run("no_such");
    run.host.addCoupledCondition("F", 3);
    auto& output = run.host.addOutputResult("P", "", 1);
    output.setValue(0, 0, -1.0);
    run.host.setCoupled(true);
    CaptureStdout();
    EXPECT_EQ(run.codesOfAll(), "44444555");
    const auto console = GetCapturedStdout();
    EXPECT_EQ(output.getValue(0, 0), 0.0);
    for (const std::string line :
         {"FMISolver: Running in coupled mode\n",
          "Error] Cannot start solver as state is: Solver not created\n",
          "Error] Cannot solve as solver state is: Solver not created\n"}) {
        EXPECT_NE(console.find(line), std::string::npos);
    }
}

TEST(SetUp, TellsItsPathsOnStandardError) {
    HostRun run("scripted");
    CaptureStderr();
    run.setUp();
    const auto console = test_support::lines(GetCapturedStderr());
    const std::string fmu = test_support::narrow(test_support::fmuPath("scripted"));
    const std::string directory = test_support::narrow(run.directory.path());
    const std::string log =
        directory + static_cast<char>(std::filesystem::path::preferred_separator);
    ASSERT_GE(console.size(), 3U);
    EXPECT_EQ(Lines(console.begin(), console.begin() + 3),
              (Lines{"FMUPath: " + fmu, "Working directory: " + directory,
                     "Log file: " + log + "scripted.out"}));
    run.solver->terminate();
}

TEST(MissingObjects, AreNamedInTheLog) {
    HostRun run("scripted");
    run.setUp();
    run.solver->setModelManager(nullptr);
    run.solver->applyInitialInputs(0);
    run.solver->start();
    run.solver->solveTo(0.1);
    const auto log = run.log();
    EXPECT_EQ(Lines(log.begin() + 4, log.end()),
              (Lines{"Error applyInitialInputs: the host gave no model set-up",
                     "Error applyInitialInputs: the host gave no model manager",
                     "Error start: the host gave no solver settings",
                     "Error start: the host gave no model manager",
                     "Error solveTo: the host gave no model manager",
                     "Error solveTo: the host gave no model manager"}));
    EXPECT_EQ(run.host.failureCode(), 0);
    run.solver->terminate();
}

TEST(HostExceptions, BecomeLinesOfTheLog) {
    const std::unique_ptr<Solver> solver(createSolver());
    CaptureStdout();
    reference_host::setLogSink([](Logger::Level, const std::string&) { throw "no exception"; });
    EXPECT_NO_THROW(solver->printBanner());
    reference_host::setLogSink(
        [](Logger::Level, const std::string&) { throw std::length_error("the log is full"); });
    EXPECT_NO_THROW(solver->printBanner());
    reference_host::setLogSink({});
    const auto console = GetCapturedStdout();
    for (const std::string line :
         {"printBanner: the host threw something that is no std::exception\n",
          "printBanner: the log is full\n"}) {
        EXPECT_NE(console.find("[FMISolver][None][Error] " + line), std::string::npos) << console;
    }
}

TEST(MissingObjects, LeaveEveryOperationCallable) {
    const std::unique_ptr<Solver> solver(createSolver());
    EXPECT_EQ(errorOf([&] { solver->parseCommandLine(nullptr); }),
              "Unable to parse command line - command line arguments unavailable");
    CaptureStdout();
    EXPECT_NO_THROW({
        solver->setUp(nullptr);
        solver->applyInitialInputs(0);
        solver->start();
        solver->writeInitialOutputs(0);
        solver->applyInputs(0.0);
        solver->solveTo(0.1);
        solver->writeOutputs(0.1);
        solver->terminate();
    });
    const auto console = GetCapturedStdout();
    for (const char* operation : {"setUp", "applyInitialInputs", "start", "writeInitialOutputs",
                                  "applyInputs", "solveTo", "writeOutputs"}) {
        EXPECT_NE(console.find(std::string("[FMISolver][None][Error] ") + operation +
                               ": the host gave no "),
                  std::string::npos)
            << operation;
    }

    HostRun empty("scripted");
    empty.host.setCommandLine("");
    EXPECT_EQ(errorOf([&] { empty.setUp(); }),
              "FMISolver - Incorrect number of command line arguments");
}

TEST(Environment, ChoosesTheOutputDirectoryAndDebugLines) {
    HostRun run("scripted");
    const test_support::TemporaryDirectory elsewhere;
    const test_support::ScopedEnvironment output("TEST_OUTPUT_PATH",
                                                 test_support::narrow(elsewhere.path()));
    const test_support::ScopedEnvironment debug("FMI_PLUGIN_DEBUG_LOGS", "1");
    CaptureStdout();
    run.begin();
    run.step(0.1);
    run.solver->terminate();
    EXPECT_NE(GetCapturedStdout().find("[Debug] Calling cleanup script as: "), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(run.directory / "scripted.out"));
    EXPECT_TRUE(std::filesystem::exists(elsewhere / "scripted.out"));
    EXPECT_EQ(test_support::lines(test_support::readFile(elsewhere / "scripted.csv")).size(), 2U);
}

TEST(TwoSolvers, RunSideBySide) {
    HostRun first("scripted", "-parameter gain 1");
    HostRun second("scripted", "-parameter gain 10");
    auto& x = first.host.addOutputResult("x", "", 1);
    auto& y = second.host.addOutputResult("x", "", 1);
    for (auto* run : {&first, &second}) {
        run->host.addCoupledCondition("u", 1).setValue(0, 0, 1.0);
        run->begin();
    }
    first.step(0.5);
    second.step(0.25);
    first.solver->terminate();
    second.step(1.0);
    EXPECT_EQ(x.getValue(0, 0), 0.5);
    EXPECT_EQ(y.getValue(0, 0), 10.0);
    EXPECT_EQ(second.host.failureCode(), 0);
    second.solver->terminate();
}

} // namespace
