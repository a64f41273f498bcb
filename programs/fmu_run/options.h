#pragma once

#include "programs/support/plot_options.h"

#include <CLI/CLI.hpp>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace fmu_run {

/// What the user asked for on the command line.
struct Options {
    std::string model; ///< Path of the FMU.
    std::optional<double> startTime;
    std::optional<double> stopTime;
    std::optional<double> outputInterval;
    std::optional<double> timeout;                                ///< Seconds of the clock.
    std::vector<std::pair<std::string, std::string>> startValues; ///< Name and text.
    std::string inputFile;
    std::string outputFile;
    std::string logFile;
    std::string workingDirectory; ///< Empty: a temporary one.
    program_support::PlotOptions plot;
    bool debugLogging = false;
    bool quiet = false;
    std::string info; ///< "table" or "json"; empty: not asked for.
    bool validate = false;
    bool writeParameters = false;
};

/// What is wrong with the first --start-value that was written NAME=VALUE; empty when none was. The
/// value would be the next word of the command line, and the complaint about another one.
std::string startValueProblem(int argc, const char* const* argv);

/// Adds fmu_run's options to `app`, bound to `options`, which must outlive it.
void addOptions(CLI::App& app, Options& options);

/// Fills in the names of the results and log file that were not given. Says on standard error where
/// they are not the usual ones because another run is writing to those.
///
/// @throws program_support::InputError where the options contradict each other.
void completeOptions(Options& options);

} // namespace fmu_run
