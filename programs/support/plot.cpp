#include "programs/support/plot.h"

#include "platform/child_process.h"
#include "platform/files.h"
#include "platform/stream_redirection.h"
#include "programs/support/csv_table.h"
#include "programs/support/input_error.h"
#include "programs/support/input_files.h"
#include "programs/support/output_files.h"
#include "programs/support/plot_script.h"
#include "programs/support/temporary_directory.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace program_support {

namespace fs = std::filesystem;

namespace {

/// "F[1][N]" has the name "F[1]" and the unit "N".
Curve curveOf(const std::string& header, std::size_t column) {
    const auto bracket = header.ends_with(']') ? header.rfind('[') : std::string::npos;
    if (bracket == std::string::npos) {
        return {column, header, "-"};
    }
    return {column, header.substr(0, bracket),
            header.substr(bracket + 1, header.size() - bracket - 2)};
}

/// The names of the first columns, for someone who looks for another.
std::string someNames(const CsvTable& table) {
    constexpr std::size_t most = 8;
    std::string names;
    for (std::size_t column = 1; column < std::min(table.names().size(), most + 1); ++column) {
        names += (column > 1 ? ", " : "") + curveOf(table.names()[column], column).name;
    }
    return table.names().size() > most + 1 ? names + ", ..." : names;
}

Curve findCurve(const CsvTable& table, const std::string& name) {
    for (std::size_t column = 1; column < table.names().size(); ++column) {
        auto curve = curveOf(table.names()[column], column);
        if (curve.name == name) {
            return curve;
        }
    }
    throw InputError("the results '" + table.path() + "' have no column '" + name +
                     "' to plot; choose by --plot-columns from " + someNames(table));
}

void requireSomeNumber(const CsvTable& table, const Curve& curve) {
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
        if (table.number(row, curve.column)) {
            return;
        }
    }
    throw InputError("the column '" + curve.name + "' of '" + table.path() +
                     "' has no finite number to plot; choose others by --plot-columns");
}

std::string firstLineOf(const fs::path& file) {
    std::ifstream stream(file);
    std::string line;
    while (line.empty() && std::getline(stream, line)) {
    }
    return line;
}

std::string gnuplot(const std::string& imageFile) {
    const auto program = platform::findProgram("gnuplot");
    if (!program) {
        throw InputError("cannot plot '" + imageFile +
                         "': the program gnuplot is not there; install it (on Debian the package "
                         "gnuplot-nox) so that it is found on the PATH");
    }
    return *program;
}

/// Has gnuplot run a script that draws into `picture`, and takes the picture from there: only here
/// does the user's file name go to where it is not interpreted.
void draw(const std::string& script, const platform::TemporaryDirectory& directory,
          const fs::path& picture, const std::string& imageFile) {
    const auto program = gnuplot(imageFile);
    const auto scriptFile = directory / "script.gnuplot";
    const auto messages = directory / "messages.txt";
    if (!(std::ofstream(scriptFile, std::ios::binary) << script << std::flush)) {
        throw InputError("cannot plot '" + imageFile + "': the disk of the temporary directory '" +
                         platform::narrowPath(directory.path()) + "' is full; make room there");
    }
    std::optional<int> status;
    {
        const platform::StreamRedirection kept(stderr, platform::narrowPath(messages));
        // Nobody's start-up files: the picture is the same everywhere.
        status = platform::runProgram({program, "-d", platform::narrowPath(scriptFile)});
    }
    if (status != 0) {
        throw InputError("gnuplot could not draw '" + imageFile + "': " + firstLineOf(messages) +
                         "; see that " + program + " works");
    }
    writeOutputFile(imageFile, fileContent(platform::narrowPath(picture)), "picture", "--plot");
}

} // namespace

void requireImageFile(const std::string& imageFile) {
    if (!imageFile.ends_with(".svg") && !imageFile.ends_with(".png")) {
        throw InputError("cannot plot into '" + imageFile +
                         "'; give a name that ends in .svg or .png");
    }
}

void plot(const PlotRequest& request) {
    requireImageFile(request.imageFile);
    const auto table = CsvTable::read(request.resultsFile);
    std::vector<Curve> curves;
    for (const auto& name : request.columns) {
        curves.push_back(findCurve(table, name));
        requireSomeNumber(table, curves.back());
    }
    const auto directory = makeTemporaryDirectory("plot_");
    const auto picture =
        directory / ("picture" + request.imageFile.substr(request.imageFile.size() - 4));
    draw(plotScript(table, curves, platform::narrowPath(picture), request.title), directory,
         picture, request.imageFile);
}

} // namespace program_support
