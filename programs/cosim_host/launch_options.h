#pragma once

#include "reference_host/cosim_host/input_signals.h"
#include "reference_host/cosim_host/run_driver.h"

#include <string>
#include <variant>
#include <vector>

namespace cosim_host {

/// What the user asked for.
struct LaunchOptions {
    std::string solverLibrary; ///< Empty: the one that belongs to this program.
    std::string commandLine;
    std::string workingDirectory = ".";
    std::string modelFile; ///< Empty: a name in the working directory.
    RunPlan plan;
    bool standalone = false;
    bool skipByOption = false;
    bool skipByParameter = false;
    bool quiet = false;

    bool openLoop = false; ///< No quarter car: the inputs come from a file or not at all.
    std::string road = "step";
    double speed = 20.0; ///< Metres a second.
    std::string inputFile;
    std::vector<OutputRequest> outputs;
    std::string outputFile;
    std::string plotFile; ///< Empty: no picture.
    std::string plotColumns;
};

/// What the program's arguments ask for; or the exit status, when they only asked for a text, such
/// as the help, that has now been printed.
///
/// @throws program_support::InputError when they make no sense.
std::variant<LaunchOptions, int> readLaunchOptions(int argc, char** argv);

} // namespace cosim_host
