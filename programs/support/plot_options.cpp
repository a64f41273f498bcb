#include "programs/support/plot_options.h"

#include "programs/support/command_line.h"
#include "programs/support/input_error.h"
#include "programs/support/plot.h"

#include <algorithm>
#include <string_view>

namespace program_support {
namespace {

constexpr std::size_t mostPlottedColumns = 12;

std::vector<std::string> splitColumnList(std::string_view list) {
    std::vector<std::string> names(1);
    int depth = 0;
    for (const char character : list) {
        if (character == ',' && depth == 0) {
            names.emplace_back();
            continue;
        }
        depth += character == '[' ? 1 : character == ']' ? -1 : 0;
        names.back() += character;
    }
    return names;
}

} // namespace

void addPlotOptions(CLI::App& app, PlotOptions& options, const std::string& drawn,
                    const std::string& columnsHelp) {
    addTextOption(app, "--plot", options.file, "FILE",
                  "Draw " + drawn +
                      " over time into a picture, FILE.svg or FILE.png (needs gnuplot)");
    addTextOption(app, "--plot-columns", options.columns, "NAMES", columnsHelp);
    addTextOption(app, "--plot-title", options.title, "TEXT", "A line above the picture");
}

void checkPlotOptions(const PlotOptions& options) {
    if (!options.file.empty()) {
        requireImageFile(options.file);
    } else if (!options.columns.empty() || !options.title.empty()) {
        const bool namesColumns = !options.columns.empty();
        throw InputError(
            (namesColumns ? "--plot-columns " + options.columns : "--plot-title " + options.title) +
            " has no picture to go to; give --plot FILE.svg or FILE.png, too");
    }
}

std::vector<std::string> columnsToPlot(const PlotOptions& options,
                                       const std::vector<std::string>& offered) {
    if (!options.columns.empty()) {
        return splitColumnList(options.columns);
    }
    const auto count = std::min(offered.size(), mostPlottedColumns);
    return {offered.begin(), offered.begin() + static_cast<std::ptrdiff_t>(count)};
}

} // namespace program_support
