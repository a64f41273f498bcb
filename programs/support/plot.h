#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace program_support {

/// A picture of columns of a results file over time.
struct PlotRequest {
    std::string resultsFile; ///< Its columns are called "name[unit]", its first is the time.
    std::string imageFile;   ///< Ends in .svg or .png.
    std::vector<std::string> columns; ///< Names, without units.
};

/// Most curves that a picture can show and still be read; what a program draws by itself.
constexpr std::size_t mostPlottedColumns = 12;

/// Throws InputError unless the file name says SVG or PNG.
void requireImageFile(const std::string& imageFile);

/// The names in a list separated by commas. A comma inside brackets belongs to a name ("A[1,2]").
std::vector<std::string> splitColumnList(std::string_view list);

/// Draws the picture with gnuplot: one panel for each unit, one above the other over the same time.
/// Throws InputError, saying what to do, when gnuplot is missing or fails, the results cannot be
/// read or a column is not there or has no number.
void plot(const PlotRequest& request);

} // namespace program_support
