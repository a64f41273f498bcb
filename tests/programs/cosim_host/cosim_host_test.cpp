#include "platform/output_file.h"
#include "programs/cosim_host/cosim_host_run.h"
#include "programs/support/csv_table.h"
#include "support/files.h"
#include "support/run_program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <functional>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace cosim_host_test;
using program_support::CsvTable;
using test_support::narrow;
using test_support::ProgramResult;
using test_support::RunOptions;

class CosimHost : public CosimHostRun {
  protected:
    ProgramResult runTyre(const std::string& solverOptions, Arguments arguments,
                          const RunOptions& options = {}) const {
        arguments.insert(arguments.end(),
                         {"--command-line", quotedTyre() + " -fmutype FTIRE " + solverOptions});
        return run(arguments, options);
    }

    ProgramResult runScripted(const std::string& commandLine, Arguments arguments = {}) const {
        const auto library = test_support::libraryPath("scripted_solver");
        arguments.insert(arguments.end(), {"--solver", narrow(library), "--command-line",
                                           commandLine, "--open-loop", "--quiet", "--debug-logging",
                                           "--stop-time", "0.5", "--step-size", "0.2"});
        return run(arguments);
    }
};

const std::string callsUpToFirstStep =
    "printBanner\nparseCommandLine 0\nsetUp 0\napplyInitialInputs 0\nstart 0\n"
    "writeInitialOutputs 0\napplyInputs 0\nsolveTo 0.2\nwriteOutputs 0.2\n";

TEST_F(CosimHost, FollowsTheSolverToOtherFilesThanThoseOfARunInProgress) {
    platform::OutputFile log(narrow(directory / "tyre.out").c_str());
    const platform::OutputFile results(narrow(directory / "tyre.csv").c_str());
    ASSERT_TRUE(log.write("theirs [Error] "));
    const auto result = runTyre("-outputsarearrays -parameter none 1", {"--stop-time", "0.01"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    EXPECT_NE(result.output.find("tyre.2.out\nResults  "), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("tyre.2.csv\n"), std::string::npos) << result.output;
    EXPECT_NE(result.error.find("in the log '"), std::string::npos) << "the parameter's warning";
    EXPECT_NE(result.error.find("tyre.2.out'\n"), std::string::npos) << result.error;
    EXPECT_EQ(table("tyre.2.csv").rowCount(), 10U);
    EXPECT_EQ(test_support::readFile(directory / "tyre.out"), "theirs [Error] ");
}

TEST_F(CosimHost, DrivesEveryOperationInOrderUpToTheStopTime) {
    const ProgramResult result = runScripted("");
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.output, callsUpToFirstStep + "applyInputs 0.2\nsolveTo 0.4\nwriteOutputs 0.4\n"
                                                  "applyInputs 0.4\nsolveTo 0.5\nwriteOutputs 0.5\n"
                                                  "terminate 0\ndeleted\n");
}

TEST_F(CosimHost, TakesOneStepWhenTheStopTimeIsAnInstantAway) {
    const ProgramResult result =
        runTyre("-outputsarearrays",
                {"--stop-time", "1e-7", "--step-size", "1", "--output-file", "received.csv"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    const CsvTable received = table("received.csv");
    ASSERT_EQ(received.rowCount(), 2U);
    EXPECT_EQ(received.time(1), 1e-7);
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
    EXPECT_EQ(test_support::lines(result.error).size(), 3U) << "one for each step";
    EXPECT_TRUE(result.output.ends_with("writeOutputs 0.5\nterminate 0\ndeleted\n"));
}

TEST_F(CosimHost, ReceivesWhatTheSolverWroteToItsResults) {
    const ProgramResult result =
        runTyre("-outputsarearrays", {"--stop-time", "0.1", "--output-file", "received.csv"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    EXPECT_EQ(result.error, "");
    EXPECT_TRUE(result.output.starts_with("Completed: ")) << result.output;
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

/// Height of a road in m and its rate under the car in m/s, over time.
using RoadOverTime = std::function<std::array<double, 2>(double time)>;

std::array<double, 2> sineRoad(double time) {
    const double frequency = 2.0 * std::numbers::pi / 10.0 * 20.0;
    return {0.01 * std::sin(frequency * time), 0.01 * frequency * std::cos(frequency * time)};
}

RoadOverTime roadOf(const CsvTable& table) {
    return [&table](double time) -> std::array<double, 2> {
        const double distance = 20.0 * time + 1e-7; // behind a bend, where there is one
        const std::size_t row = table.rowAt(distance);
        if (row + 1 == table.rowCount()) {
            return {table.value(row, 1), 0.0};
        }
        const double length = table.time(row + 1) - table.time(row);
        const double slope = (table.value(row + 1, 1) - table.value(row, 1)) / length;
        return {table.value(row, 1) + slope * (20.0 * time - table.time(row)), 20.0 * slope};
    };
}

/// The quarter car and the tyre's vertical equations as one system, integrated in small steps.
class WholeQuarterCar {
  public:
    explicit WholeQuarterCar(RoadOverTime road) : road_(std::move(road)) {}

    /// Heights of body and hub at `time`, which must not be before that of the last call.
    std::array<double, 2> heightsAt(double time) {
        while (time_ < time - 1e-9) {
            step(1e-4);
        }
        return {state_[0], state_[2]};
    }

  private:
    using State = std::array<double, 4>; // body, its velocity, hub, its velocity

    [[nodiscard]] State rates(const State& y, double time) const {
        const auto [road, roadRate] = road_(time);
        const double suspension = 25000.0 * (y[2] - y[0]) + 1800.0 * (y[3] - y[1]);
        const double weight = 440.0 * 9.81;
        const double deflection = weight / 200000.0 + road - y[2];
        const double depth = std::clamp(deflection / 0.002, 0.0, 1.0);
        const double damping = 150.0 * depth * depth * (3.0 - 2.0 * depth);
        const double tyre =
            std::max(0.0, 200000.0 * std::max(0.0, deflection) + damping * (roadRate - y[3]));
        return {y[1], suspension / 400.0, y[3], (tyre - weight - suspension) / 40.0};
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

    RoadOverTime road_;
    State state_{};
    double time_ = 0.0;
    int steps_ = 0;
};

/// Largest differences of body and hub height in mm between a run and the whole system.
std::array<double, 2> largestDifferences(const CsvTable& run, const RoadOverTime& road) {
    WholeQuarterCar whole(road);
    std::array<double, 2> largest{};
    for (std::size_t row = 0; row < run.rowCount(); ++row) {
        const auto heights = whole.heightsAt(run.time(row));
        const std::array<double, 2> coupled = {valueAt(run, row, "body.height[m]"),
                                               valueAt(run, row, "hub.height[m]")};
        for (std::size_t i = 0; i < 2; ++i) {
            largest[i] = std::max(largest[i], 1000.0 * std::abs(coupled[i] - heights[i]));
        }
    }
    return largest;
}

TEST_F(CosimHost, CouplesTheQuarterCarAsExactlyAsTheManualSays) {
    const std::string demonstration =
        narrow(std::filesystem::path(DOCUMENTS) / "examples/road.csv");
    const CsvTable demonstrationRoad = CsvTable::read(demonstration);

    struct Case {
        std::string road;
        RoadOverTime overTime;
        const char *stopTime, *step;
        double body, hub; // largest differences in mm
    };

    const Case cases[] = {{"sine", sineRoad, "1", "0.002", 0.0033, 0.0165},
                          {"sine", sineRoad, "1", "0.001", 0.0012, 0.0063},
                          {"sine", sineRoad, "1", "0.0005", 0.0005, 0.0026},
                          {demonstration, roadOf(demonstrationRoad), "6", "0.001", 0.018, 0.096}};
    for (const Case& c : cases) {
        const ProgramResult result =
            runTyre("-outputsarearrays", {"--road", c.road, "--stop-time", c.stopTime,
                                          "--step-size", c.step, "--output-file", "received.csv"});
        EXPECT_EQ(result.exitStatus, 0) << result.error;
        const auto [body, hub] = largestDifferences(table("received.csv"), c.overTime);
        EXPECT_NEAR(body, c.body, 0.05 * c.body) << c.road << " " << c.step;
        EXPECT_NEAR(hub, c.hub, 0.05 * c.hub) << c.road << " " << c.step;
    }
}

TEST_F(CosimHost, SaysThatTheWheelCannotSettleExactlyWhereItDoesNot) {
    for (const bool settles : {true, false}) {
        const ProgramResult result =
            runTyre("-outputsarearrays", {"--quiet", "--step-size", settles ? "0.0188" : "0.0189",
                                          "--stop-time", "120", "--output-file", "received.csv"});
        EXPECT_EQ(result.exitStatus, 0) << result.error;
        const std::string warning =
            "cosim_host: with a communication step of 0.0189 s a wheel never settles on its "
            "tyre: the results show that, not the car; give --step-size 0.0188 or less\n";
        EXPECT_EQ(result.error.find(warning) == std::string::npos, settles) << result.error;
        const CsvTable received = table("received.csv");
        double late = 0.0;
        for (std::size_t row = received.rowCount() - 100; row < received.rowCount(); ++row) {
            late = std::max(late, std::abs(valueAt(received, row, "hub.height[m]") - 0.02));
        }
        EXPECT_EQ(late < 1e-4, settles) << late;
    }
}

TEST_F(CosimHost, TakesTheVehicleFromAFileInAnyUnit) {
    const auto received = [&](const Arguments& vehicle) {
        Arguments arguments = {"--stop-time", "1.2", "--output-file", "received.csv"};
        arguments.insert(arguments.end(), vehicle.begin(), vehicle.end());
        EXPECT_EQ(runTyre("-outputsarearrays", arguments).exitStatus, 0);
        return test_support::readFile(directory / "received.csv");
    };
    const std::string builtIn = received({});
    EXPECT_EQ(received({"--vehicle-file",
                        narrow(std::filesystem::path(DOCUMENTS) / "examples/quarter_car.txt")}),
              builtIn);
    test_support::writeFile(directory / "car.txt", "# heavy\r\nbodyMass=0.6 t\r\n\r\n"
                                                   "tyreStiffness = 250 N/mm # hard");
    EXPECT_NE(received({"--vehicle-file", "car.txt"}), builtIn);
    const CsvTable run = table("received.csv");
    EXPECT_NEAR(valueAt(run, 0, "force[3][N]"), 200000.0 / 250000.0 * 640.0 * 9.81, 1e-6)
        << "of the tyre in the FMU, pressed as the other one would be";
}

TEST_F(CosimHost, RefusesAVehicleItDoesNotUnderstand) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"bodyMass 400 kg",
         "'bodyMass 400 kg' is no line 'name = value unit'; write it like 'bodyMass = 400 kg'"},
        {"bodymass = 400 kg",
         "'bodymass' is no value of this vehicle; give bodyMass, wheelMass, springStiffness, "
         "damping, tyreRadius, tyreStiffness or tyreDamping"},
        {"damping = 1 N.s/m\ndamping = 1 N.s/m", "'damping' was given before; give it once"},
        {"bodyMass = many kg", "bodyMass is 'many'; give a number like 0.5 or 1e-3, and its unit"},
        {"bodyMass = 400", "bodyMass is in ''; give it in kg, g or t"},
        {"springStiffness = 25 mm", "springStiffness is in 'mm'; give it in N/m, N/mm or kN/m"},
        {"bodyMass = -1 kg", "bodyMass is -1; give a number above 0"},
        {"damping = -1 N.s/m", "damping is -1; give 0 or a number above"},
    };
    for (const auto& [content, problem] : cases) {
        test_support::writeFile(directory / "car.txt", content);
        const ProgramResult result = run({"--command-line", "x", "--vehicle-file", "car.txt"});
        const std::string line = std::to_string(test_support::lines(content).size());
        EXPECT_EQ(result.exitStatus, 2) << content;
        EXPECT_EQ(result.error, "cosim_host: in 'car.txt', line " + line + ": " + problem + "\n");
    }
}

TEST_F(CosimHost, ReckonsWithTheVehicleWhetherItCanSettle) {
    test_support::writeFile(directory / "undamped.txt", "damping = 0 N.s/m");
    const ProgramResult result =
        runTyre("-outputsarearrays", {"--quiet", "--stop-time", "0.1", "--step-size", "0.01",
                                      "--vehicle-file", "undamped.txt"});
    EXPECT_NE(result.error.find("give --step-size 0.0073 or less\n"), std::string::npos)
        << result.error;
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
                     "--output-file", "received.csv", "--standalone", "--debug-logging"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    EXPECT_NE(result.output.find("standalone mode"), std::string::npos);
    const CsvTable received = table("received.csv");
    EXPECT_NEAR(valueAt(received, 0, "force[3][-]"), 2000.0, 1e-6);
    EXPECT_NEAR(valueAt(received, 3, "contact.deflection[-]"), 0.02, 1e-12) << "imposed at 0.5 s";
}

TEST_F(CosimHost, NamesTheFilesThatTheSolverWrote) {
    // A bare FMU path loses its last character as the end of an ending, even where it has none.
    std::filesystem::copy_file(test_support::fmuPath("tyre"), directory / "model");
    std::filesystem::create_directory(directory / "files");
    const ProgramResult result =
        run({"--command-line", "model -fmutype FTIRE -outputsarearrays", "--working-directory",
             narrow(directory / "files"), "--stop-time", "0.01"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    for (const char* name : {"mode.out", "mode.csv"}) {
        EXPECT_TRUE(std::filesystem::exists(directory / "files" / name)) << name;
        EXPECT_NE(result.output.find(name), std::string::npos) << result.output;
    }
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
    EXPECT_NE(wrongKind.error.find("Please check the input model type specified (-fmutype)"),
              std::string::npos)
        << wrongKind.error;
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
        EXPECT_NE(test_support::readFile(directory / "tyre.out").find("Closing plugin"),
                  std::string::npos);
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
