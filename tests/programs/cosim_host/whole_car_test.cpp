// cosim_host with a car on four tyres, from outside.
#include "programs/cosim_host/cosim_host_run.h"
#include "programs/support/csv_table.h"
#include "support/files.h"
#include "support/run_program.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace cosim_host_test;
using program_support::CsvTable;
using test_support::narrow;
using test_support::ProgramResult;

const std::string wheels[] = {"frontLeft", "frontRight", "rearLeft", "rearRight"};

std::string tyreCommandLine(const std::string& options = "") {
    return quotedTyre() + " -fmutype FTIRE -outputsarearrays" + options;
}

/// Runs cosim_host with a car.
class WholeCar : public CosimHostRun {
  protected:
    ProgramResult runCar(Arguments arguments) const {
        arguments.insert(arguments.end(), {"--vehicle", "car", "--command-line", tyreCommandLine(),
                                           "--quiet", "--output-file", "received.csv"});
        return run(arguments);
    }

    CsvTable received(const Arguments& arguments) const {
        const ProgramResult result = runCar(arguments);
        EXPECT_EQ(result.exitStatus, 0) << result.error;
        return table("received.csv");
    }
};

TEST_F(WholeCar, RestsOnTheWheelLoadsOfStatics) {
    test_support::writeFile(directory / "car.txt",
                            "bodyMass = 1.35 t\nfront.distance = 1150 mm\nrear.distance = 1.42 m\n"
                            "front.wheelMass = 41 kg\nrear.wheelMass = 37 kg\n");
    const CsvTable table =
        received({"--road", "flat", "--stop-time", "0.5", "--vehicle-file", "car.txt"});
    const double front = 9.81 * (1350.0 * 1.42 / 2.57 / 2.0 + 41.0);
    const double rear = 9.81 * (1350.0 * 1.15 / 2.57 / 2.0 + 37.0);
    for (const std::size_t row : {0, 1, 500}) {
        EXPECT_NEAR(valueAt(table, row, "frontLeft.force[3][N]"), front, 1e-9 * front);
        EXPECT_NEAR(valueAt(table, row, "frontRight.force[3][N]"), front, 1e-9 * front);
        EXPECT_NEAR(valueAt(table, row, "rearLeft.force[3][N]"), rear, 1e-9 * rear);
        EXPECT_NEAR(valueAt(table, row, "rearRight.force[3][N]"), rear, 1e-9 * rear);
    }
}

TEST_F(WholeCar, KeepsEveryRowOfEveryWheelAndBothSidesAlike) {
    const CsvTable table = received({"--road", "sine", "--stop-time", "0.4"});
    ASSERT_EQ(table.rowCount(), 401U);
    EXPECT_GT(std::abs(valueAt(table, 400, "body.pitch[rad]")), 1e-4);
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
        ASSERT_EQ(valueAt(table, row, "body.roll[rad]"), 0.0);
    }
    for (const std::string& wheel : wheels) {
        const CsvTable results = CsvTable::read(narrow(directory / ("tyre_" + wheel + ".csv")));
        for (std::size_t row = 1; row <= 400; ++row) {
            ASSERT_EQ(valueAt(results, results.rowAt(table.time(row)), "force[3][N]"),
                      valueAt(table, row, wheel + ".force[3][N]"))
                << wheel << " " << row;
        }
        EXPECT_NE(
            test_support::readFile(directory / ("tyre_" + wheel + ".out")).find("Closing plugin"),
            std::string::npos);
    }
}

TEST_F(WholeCar, MovesMirroredOnRoadsThatAreExchanged) {
    const Arguments common = {"--stop-time", "1.3"};
    Arguments leftStep = common;
    leftStep.insert(leftStep.end(), {"--road", "step", "--right-road", "flat"});
    Arguments rightStep = common;
    rightStep.insert(rightStep.end(), {"--road", "flat", "--right-road", "step"});
    const CsvTable table = received(leftStep);
    const CsvTable mirrored = received(rightStep);
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
        ASSERT_EQ(valueAt(table, row, "body.height[m]"), valueAt(mirrored, row, "body.height[m]"));
        ASSERT_EQ(valueAt(table, row, "body.roll[rad]"), -valueAt(mirrored, row, "body.roll[rad]"));
        ASSERT_EQ(valueAt(table, row, "frontLeft.force[3][N]"),
                  valueAt(mirrored, row, "frontRight.force[3][N]"));
        ASSERT_EQ(valueAt(table, row, "rearRight.hub.height[m]"),
                  valueAt(mirrored, row, "rearLeft.hub.height[m]"));
    }
    EXPECT_GT(valueAt(table, 1100, "body.roll[rad]"), 1e-3) << "the left side is lifted";
}

TEST_F(WholeCar, TakesAnotherTyreForAWheel) {
    const CsvTable table =
        received({"--road", "flat", "--stop-time", "0.05", "--wheel",
                  "rearRight=" + tyreCommandLine(" -parameter verticalStiffness 100000")});
    const double load = valueAt(table, 0, "rearLeft.force[3][N]");
    EXPECT_NEAR(valueAt(table, 0, "rearRight.force[3][N]"), load / 2.0, 1e-9 * load);
    EXPECT_LT(valueAt(table, 50, "rearRight.hub.height[m]"), -1e-3);
    EXPECT_GT(valueAt(table, 50, "body.roll[rad]"), 1e-3) << "the right side sinks";
}

TEST_F(WholeCar, SaysWhichWheelFailed) {
    const std::string incomplete = narrow(test_support::fmuPath("scripted_missing_function"));
    const ProgramResult result = runCar({"--wheel", "rearLeft=\"" + incomplete + '"'});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_NE(result.error.find("cosim_host: setUp at 0 s: rearLeft: the solver reported failure "
                                "code 4; "),
              std::string::npos)
        << result.error;
    for (const std::string wheel : {"frontLeft", "frontRight"}) {
        EXPECT_NE(
            test_support::readFile(directory / ("tyre_" + wheel + ".out")).find("Closing plugin"),
            std::string::npos)
            << "terminated all the same";
    }
}

TEST_F(WholeCar, RefusesWhatDoesNotFitTogether) {
    const std::vector<std::pair<Arguments, std::string>> cases = {
        {{"--wheel", "middle=x"}, "--wheel 'middle=x' names no wheel; give frontLeft=TEXT"},
        {{"--wheel", "frontLeft"}, "--wheel 'frontLeft' names no wheel"},
        {{"--keep-going"}, "--vehicle car goes neither"},
        {{"--open-loop"}, "--vehicle car goes neither"},
        {{"--right-road", "none.csv"}, "none.csv"},
        {{"--wheel", "rearLeft=none.fmu"}, "there is no file 'none.fmu'"},
    };
    for (const auto& [arguments, problem] : cases) {
        const ProgramResult result = runCar(arguments);
        EXPECT_EQ(result.exitStatus, 2) << problem;
        EXPECT_NE(result.error.find(problem), std::string::npos) << result.error;
    }
}

TEST_F(WholeCar, SaysThatAWheelCannotSettle) {
    const ProgramResult result =
        runCar({"--road", "flat", "--step-size", "0.0187", "--stop-time", "0.1"});
    EXPECT_NE(
        result.error.find("a communication step of 0.0187 s a wheel never settles on its tyre: "
                          "the results show that, not the car; give --step-size 0.0186 or "
                          "less"),
        std::string::npos)
        << result.error;
}

} // namespace
