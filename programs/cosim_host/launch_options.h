#pragma once

#include "programs/cosim_host/car.h"
#include "programs/cosim_host/input_signals.h"
#include "programs/cosim_host/run_driver.h"
#include "programs/support/plot_options.h"

#include <array>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace cosim_host {

/// A text for each wheel, in their order.
using PerWheelText = std::array<std::string, wheelCount>;

/// What the user asked for.
struct LaunchOptions {
    std::string solverLibrary; ///< Empty: the one that belongs to this program.
    std::string commandLine;
    std::string workingDirectory = ".";
    std::string modelFile; ///< Empty: a name in the working directory.
    RunPlan plan;
    std::optional<double> timeout; ///< Seconds of the clock.
    bool standalone = false;
    bool skipByOption = false;
    bool skipByParameter = false;
    bool quiet = false;
    bool debugLogging = false; ///< Show what the solver prints.
    bool strict = false;       ///< Warnings and errors in the log make the run a failed one.

    bool wholeCar = false;          ///< A car on four tyres instead of a quarter of one.
    PerWheelText wheelCommandLines; ///< The solvers' own; empty: `commandLine`.
    std::string rightRoad;          ///< Empty: as `road`.
    bool openLoop = false;          ///< No car: the inputs come from a file or not at all.
    std::string road = "step";
    double speed = 20.0;     ///< Metres a second.
    std::string vehicleFile; ///< Empty: the vehicle as it is built in.
    std::string inputFile;
    std::vector<OutputRequest> outputs;
    std::string outputFile;
    program_support::PlotOptions plot;
};

/// What the program's arguments ask for; or the exit status, when they only asked for a text, such
/// as the help, that has now been printed.
///
/// @throws program_support::InputError when they make no sense.
std::variant<LaunchOptions, int> readLaunchOptions(int argc, char** argv);

} // namespace cosim_host
