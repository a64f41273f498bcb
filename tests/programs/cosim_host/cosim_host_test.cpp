#include "platform/shared_library.h"
#include "program_support/csv_table.h"
#include "support/files.h"
#include "support/run_program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

namespace {

using program_support::CsvTable;
using test_support::narrow;
using test_support::ProgramResult;
using test_support::RunOptions;
using test_support::TemporaryDirectory;
using Arguments = std::vector<std::string>;

/// Path of the tyre FMU as solvers' command lines take it.
std::string quotedTyre() {
    std::ostringstream text;
    text << '"' << narrow(test_support::fmuPath("tyre")) << '"';
    return text.str();
}

/// Runs cosim_host in a directory of its own.
class CosimHost : public testing::Test {
  protected:
    ProgramResult run(const Arguments& arguments, RunOptions options = {}) const {
        options.workingDirectory = directory.path();
        return test_support::runProgram(test_support::programPath("cosim_host"), arguments,
                                        options);
    }

    ProgramResult runTyre(const std::string& solverOptions, Arguments arguments,
                          const RunOptions& options = {}) const {
        arguments.insert(arguments.end(),
                         {"--command-line", quotedTyre() + " -fmutype FTIRE " + solverOptions});
        return run(arguments, options);
    }

    ProgramResult runScripted(const std::string& commandLine, Arguments arguments = {}) const {
        const auto library = std::filesystem::path(LIBRARY_DIRECTORY) /
                             (std::string("scripted_solver") + platform::SharedLibrary::suffix());
        arguments.insert(arguments.end(),
                         {"--solver", narrow(library), "--command-line", commandLine, "--open-loop",
                          "--quiet", "--stop-time", "0.5", "--step-size", "0.2"});
        return run(arguments);
    }

    [[nodiscard]] CsvTable table(const std::string& name) const {
        return CsvTable::read(narrow(directory / name));
    }

    TemporaryDirectory directory{"a run"};
};

double valueAt(const CsvTable& table, std::size_t row, const std::string& name) {
    const auto column = table.columnOf(name);
    EXPECT_TRUE(column) << name;
    return column ? table.value(row, *column) : NAN;
}

const std::string callsUpToFirstStep =
    "printBanner\nparseCommandLine 0\nsetUp 0\napplyInitialInputs 0\nstart 0\n"
    "writeInitialOutputs 0\napplyInputs 0\nsolveTo 0.2\nwriteOutputs 0.2\n";

TEST_F(CosimHost, DrivesEveryOperationInOrderUpToTheStopTime) {
    const ProgramResult result = runScripted("");
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.output, callsUpToFirstStep + "applyInputs 0.2\nsolveTo 0.4\nwriteOutputs 0.4\n"
                                                  "applyInputs 0.4\nsolveTo 0.5\nwriteOutputs 0.5\n"
                                                  "terminate 0\ndeleted\n");
}

TEST_F(CosimHost, EndsAtAFailureAndTerminatesWhatWasSetUp) {
    struct Case {
        const char* script;
        const char* error;
        const char* calls; // the last ones
    };

    const Case cases[] = {
        {"parseCommandLine throw", "parseCommandLine at 0 s: as told",
         "printBanner\nparseCommandLine 0\ndeleted\n"},
        {"setUp 4", "setUp at 0 s: the solver reported failure code 4",
         "setUp 0\nterminate 0\ndeleted\n"},
        {"start throw", "start at 0 s: as told", "start 0\nterminate 0\ndeleted\n"},
        {"solveTo 5", "solveTo at 0 s: the solver reported failure code 5",
         "solveTo 0.2\nterminate 0\ndeleted\n"},
        {"terminate 5", "terminate at 0.5 s: the solver reported failure code 5",
         "writeOutputs 0.5\nterminate 0\ndeleted\n"},
    };
    for (const Case& c : cases) {
        const ProgramResult result = runScripted(c.script);
        EXPECT_EQ(result.exitStatus, 1) << c.script;
        EXPECT_NE(result.error.find(c.error), std::string::npos) << result.error;
        EXPECT_TRUE(result.output.ends_with(c.calls)) << c.script << ":\n" << result.output;
    }
}

TEST_F(CosimHost, GoesOnAfterAFailureCodeWhenTold) {
    const ProgramResult result = runScripted("writeOutputs 3", {"--keep-going"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(test_support::lines(result.error).size(), 1U) << "a code that stays is no news";
    EXPECT_TRUE(result.output.ends_with("writeOutputs 0.5\nterminate 0\ndeleted\n"));
}

TEST_F(CosimHost, RefusesBadInputWithOneLineThatNamesIt) {
    test_support::writeFile(directory / "text.csv", "time,F\n0,1\n1,much\n");
    test_support::writeFile(directory / "wide.csv", "s,left,right\n0,0,0\n");
    auto noSolver = std::filesystem::path(LIBRARY_DIRECTORY) / "libfmi_tools.so";
    if (!std::filesystem::exists(noSolver)) {
        noSolver = test_support::programPath("cosim_host").replace_filename("fmi_tools.dll");
    }
    const std::vector<std::pair<Arguments, std::string>> cases = {
        {{}, "--command-line"},
        {{"--command-line", "x", "--step-size", "abc"}, "abc"},
        {{"--command-line", "x", "--step-size", "0"}, "--step-size"},
        {{"--command-line", "x", "--stop-time", "1e9", "--step-size", "1e-3"}, "--step-size"},
        {{"--command-line", "x", "--timeout", "-1"}, "--timeout"},
        {{"--command-line", "x", "--skip", "all"}, "all"},
        {{"--command-line", "x", "--output", "P::4"}, "P::4"},
        {{"--command-line", "x", "--plot", "p.svg"}, "--output-file"},
        {{"--command-line", "x", "--input-file", "none.csv"}, "none.csv"},
        {{"--command-line", "x", "--input-file", "text.csv"}, "much"},
        {{"--command-line", "x", "--road", "none.csv"}, "none.csv"},
        {{"--command-line", "x", "--road", "wide.csv"}, "wide.csv' has 3 columns"},
        {{"--command-line", "x", "--solver", "none.so"}, "none.so"},
        {{"--command-line", "x", "--solver", narrow(noSolver)}, "is no solver library"},
        {{"--command-line", "x", "--output-file", "none/out.csv"}, "none/out.csv"},
    };
    for (const auto& [arguments, named] : cases) {
        const ProgramResult result = run(arguments);
        EXPECT_EQ(result.exitStatus, 2) << named;
        EXPECT_NE(result.error.find(named), std::string::npos) << named << ": " << result.error;
        EXPECT_EQ(test_support::lines(result.error).size(), 1U) << result.error;
    }
}

TEST_F(CosimHost, ReceivesWhatTheSolverWroteToItsResults) {
    const ProgramResult result =
        runTyre("-outputsarearrays", {"--stop-time", "0.1", "--output-file", "received.csv"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    for (const char* told : {"100 steps", "force[3] [N]", "tyre.out", "tyre.csv", "received.csv"}) {
        EXPECT_NE(result.output.find(told), std::string::npos) << told;
    }
    const CsvTable received = table("received.csv");
    const CsvTable results = table("tyre.csv");
    ASSERT_EQ(received.rowCount(), 101U);
    EXPECT_EQ(received.time(100), 0.1);
    for (std::size_t row = 1; row <= 100; ++row) {
        const std::size_t same = results.rowAt(received.time(row));
        ASSERT_EQ(results.time(same), received.time(row));
        for (const char* name : {"force[1][N]", "force[3][N]", "moment[2][N.m]"}) {
            EXPECT_EQ(valueAt(received, row, name), valueAt(results, same, name));
        }
    }
}

/// The quarter car and the tyre's vertical equations as one system, integrated in small steps over
/// the sine road. The wheel never leaves that road.
class WholeQuarterCar {
  public:
    /// Heights of body and hub at `time`, which must not be before that of the last call.
    std::array<double, 2> heightsAt(double time) {
        while (time_ < time - 1e-9) {
            step(1e-4);
        }
        return {state_[0], state_[2]};
    }

  private:
    using State = std::array<double, 4>; // body, its velocity, hub, its velocity

    static State rates(const State& y, double time) {
        const double waveNumber = 2.0 * std::numbers::pi / 10.0;
        const double phase = waveNumber * 20.0 * time;
        const double road = 0.01 * std::sin(phase);
        const double roadRate = 0.01 * waveNumber * 20.0 * std::cos(phase);
        const double suspension = 25000.0 * (y[2] - y[0]) + 1800.0 * (y[3] - y[1]);
        const double tyre = 200000.0 * (road - y[2]) + 150.0 * (roadRate - y[3]);
        return {y[1], suspension / 400.0, y[3], (tyre - suspension) / 40.0};
    }

    static State moved(State y, const State& rate, double duration) {
        for (std::size_t i = 0; i < y.size(); ++i) {
            y[i] += duration * rate[i];
        }
        return y;
    }

    void step(double h) {
        const State k1 = rates(state_, time_);
        const State k2 = rates(moved(state_, k1, h / 2), time_ + h / 2);
        const State k3 = rates(moved(state_, k2, h / 2), time_ + h / 2);
        const State k4 = rates(moved(state_, k3, h), time_ + h);
        state_ = moved(moved(moved(moved(state_, k1, h / 6), k2, h / 3), k3, h / 3), k4, h / 6);
        time_ = ++steps_ * h;
    }

    State state_{};
    double time_ = 0.0;
    int steps_ = 0;
};

/// Largest differences of body and hub height between a run and the whole system.
std::array<double, 2> largestDifferences(const CsvTable& run) {
    WholeQuarterCar whole;
    std::array<double, 2> largest{};
    for (std::size_t row = 0; row < run.rowCount(); ++row) {
        const auto heights = whole.heightsAt(run.time(row));
        largest[0] =
            std::max(largest[0], std::abs(valueAt(run, row, "body.height[m]") - heights[0]));
        largest[1] =
            std::max(largest[1], std::abs(valueAt(run, row, "hub.height[m]") - heights[1]));
    }
    return largest;
}

TEST_F(CosimHost, CouplesTheQuarterCarToFirstOrderOfTheStep) {
    const auto differences = [&](const std::string& step) {
        const ProgramResult result =
            runTyre("-outputsarearrays", {"--road", "sine", "--stop-time", "1", "--step-size", step,
                                          "--output-file", "received.csv"});
        EXPECT_EQ(result.exitStatus, 0) << result.error;
        return largestDifferences(table("received.csv"));
    };
    const auto coarse = differences("0.002");
    const auto fine = differences("0.001");
    EXPECT_LT(fine[0], 2e-5) << "of 10 mm";
    EXPECT_LT(fine[1], 6e-5) << "of 10 mm";
    EXPECT_NEAR(coarse[0] / fine[0], 2.0, 0.1);
    EXPECT_NEAR(coarse[1] / fine[1], 2.0, 0.1);
}

TEST_F(CosimHost, ExchangesVectorsInEveryWayTheSolverCan) {
    const auto loads = [&](const std::string& solverOptions) {
        runTyre(solverOptions, {"--stop-time", "1.05", "--output-file", "received.csv"});
        const CsvTable received = table("received.csv");
        return std::vector{valueAt(received, 1000, "force[3][N]"),
                           valueAt(received, 1050, "force[3][N]")};
    };
    const auto whole = loads("-outputsarearrays");
    EXPECT_GT(std::abs(whole[1] - whole[0]), 100.0) << "the step in the road";
    EXPECT_EQ(loads(""), whole);
    EXPECT_EQ(loads("-noarrayinputs"), whole);
}

TEST_F(CosimHost, DrivesOverARoadFromAFile) {
    test_support::writeFile(directory / "ramp.csv", "distance,height\n2,0\n12,0.05\n");
    const ProgramResult result =
        runTyre("-outputsarearrays", {"--road", "ramp.csv", "--speed", "10", "--stop-time", "1.5",
                                      "--output-file", "received.csv"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    const CsvTable received = table("received.csv");
    EXPECT_EQ(valueAt(received, 100, "road.height[m]"), 0.0);
    EXPECT_NEAR(valueAt(received, 700, "road.height[m]"), 0.025, 1e-12);
    EXPECT_EQ(valueAt(received, 1500, "road.height[m]"), 0.05);
    EXPECT_NEAR(valueAt(received, 1200, "body.height[m]"), 0.05, 0.03);
}

TEST_F(CosimHost, ImposesAFileAndLooksAtTheOutputsAskedFor) {
    test_support::writeFile(directory / "hub.csv",
                            "time,hubPosition[1],hubPosition[2],hubPosition[3],roadHeight\n"
                            "0,0,0,0.31,0\n1,0,0,0.29,0\n");
    const ProgramResult result =
        runTyre("", {"--input-file", "hub.csv", "--output", "force[3]", "--output",
                     "contact.deflection:Length", "--stop-time", "1", "--step-size", "0.25",
                     "--output-file", "received.csv", "--standalone"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    EXPECT_NE(result.output.find("standalone mode"), std::string::npos);
    const CsvTable received = table("received.csv");
    EXPECT_NEAR(valueAt(received, 0, "force[3][-]"), 2000.0, 1e-6);
    EXPECT_NEAR(valueAt(received, 3, "contact.deflection[-]"), 0.02, 1e-12) << "imposed at 0.5 s";
}

TEST_F(CosimHost, SkipsTheStepsByEitherSwitch) {
    for (const char* how : {"option", "parameter"}) {
        const ProgramResult result =
            runTyre("-outputsarearrays", {"--skip", how, "--stop-time", "0.01"});
        EXPECT_EQ(result.exitStatus, 0) << result.error;
        EXPECT_EQ(test_support::readFile(directory / "tyre.out").find("Initialised FMU"),
                  std::string::npos);
    }
}

TEST_F(CosimHost, TellsWhyTheSolverFailed) {
    const ProgramResult wrongKind = run({"--command-line", quotedTyre()});
    EXPECT_EQ(wrongKind.exitStatus, 1);
    EXPECT_NE(wrongKind.error.find("start at 0 s: Unexpected FMUType"), std::string::npos);
    const ProgramResult noSuchOutput = runTyre("", {"--output", "none", "--stop-time", "1"});
    EXPECT_EQ(noSuchOutput.exitStatus, 1);
    EXPECT_NE(
        noSuchOutput.error.find("writeInitialOutputs at 0 s: the solver reported failure code 4"),
        std::string::npos);
}

TEST_F(CosimHost, EndsEarlyBetweenTwoStepsWithEverythingOnDisk) {
    const auto expectWholeFiles = [&](const ProgramResult& result) {
        EXPECT_EQ(result.exitStatus, 130) << result.error;
        EXPECT_NE(result.output.find("Interrupted: "), std::string::npos);
        const CsvTable received = table("received.csv");
        const CsvTable results = table("tyre.csv");
        EXPECT_EQ(received.time(received.rowCount() - 1), results.time(results.rowCount() - 1));
        EXPECT_NE(result.output.find("Closed plugin"), std::string::npos);
    };
    Arguments endless = {"--stop-time", "1e5", "--output-file", "received.csv"};
    RunOptions interrupt;
    interrupt.interruptWhen = [&] {
        return test_support::lines(test_support::readFile(directory / "received.csv")).size() > 20;
    };
    if (test_support::canInterrupt) {
        expectWholeFiles(runTyre("-outputsarearrays", endless, interrupt));
    }
    endless.insert(endless.end(), {"--timeout", "0.3"});
    expectWholeFiles(runTyre("-outputsarearrays", endless));
}

} // namespace
