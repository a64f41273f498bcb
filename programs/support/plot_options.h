#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace program_support {

/// The picture that the user asked for.
struct PlotOptions {
    std::string file;    ///< Empty: no picture.
    std::string columns; ///< A list of names; empty: the program chooses.
    std::string title{}; ///< Above the picture.
};

/// Adds --plot, --plot-columns and --plot-title to `app`, bound to `options`, which must outlive it. --help says
/// of the first that it draws `drawn`, such as "results", and of the second `columnsHelp`.
void addPlotOptions(CLI::App& app, PlotOptions& options, const std::string& drawn,
                    const std::string& columnsHelp);

/// @throws InputError when the options contradict each other or the file's name says no format.
void checkPlotOptions(const PlotOptions& options);

/// The names in the user's list, in which a comma inside brackets belongs to a name ("A[1,2]");
/// without a list the first ones of `offered`, as many as can be told apart in one picture.
std::vector<std::string> columnsToPlot(const PlotOptions& options,
                                       const std::vector<std::string>& offered);

} // namespace program_support
