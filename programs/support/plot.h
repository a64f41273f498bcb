#pragma once

#include <string>
#include <vector>

namespace program_support {

/// A picture of columns of a results file over time.
struct PlotRequest {
    std::string resultsFile; ///< Its columns are called "name[unit]", its first is the time.
    std::string imageFile;   ///< Ends in .svg or .png.
    std::vector<std::string> columns; ///< Names, without units.
    std::string title{};              ///< Above the picture; empty: none.
};

/// @throws InputError unless the file name says SVG or PNG.
void requireImageFile(const std::string& imageFile);

/// Draws the picture with gnuplot: one panel for each unit, one above the other over the same time.
///
/// @throws InputError, saying what to do, when gnuplot is missing or fails, the results cannot be
///         read or a column is not there or has no number.
void plot(const PlotRequest& request);

} // namespace program_support
