#include "program_support/plot.h"

#include "platform/child_process.h"
#include "platform/files.h"
#include "platform/stream_redirection.h"
#include "program_support/csv_table.h"
#include "program_support/input_error.h"
#include "program_support/plot_script.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

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

/// A file of this run only, removed with the object.
class TemporaryFile {
  public:
    explicit TemporaryFile(const std::string& suffix)
        : path_(fs::temp_directory_path() /
                ("plot_" + std::to_string(std::random_device()()) + suffix)) {}

    ~TemporaryFile() {
        std::error_code error;
        fs::remove(path_, error);
    }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    TemporaryFile(TemporaryFile&&) = delete;
    TemporaryFile& operator=(TemporaryFile&&) = delete;

    [[nodiscard]] std::string path() const { return platform::narrowPath(path_); }

    void write(const std::string& text) const { std::ofstream(path_, std::ios::binary) << text; }

    [[nodiscard]] std::string firstLine() const {
        std::ifstream stream(path_);
        std::string line;
        while (line.empty() && std::getline(stream, line)) {
        }
        return line;
    }

  private:
    fs::path path_;
};

void runGnuplot(const std::string& script, const std::string& imageFile) {
    const TemporaryFile scriptFile(".gnuplot");
    const TemporaryFile messages(".txt");
    scriptFile.write(script);
    std::optional<int> status;
    {
        const platform::StreamRedirection kept(stderr, messages.path());
        status = platform::runProgram({"gnuplot", scriptFile.path()});
    }
    if (!status) {
        throw InputError("cannot plot '" + imageFile +
                         "': the program gnuplot is not there; install it (on Debian the package "
                         "gnuplot-nox) so that it is found on the PATH");
    }
    if (*status != 0) {
        throw InputError("gnuplot could not draw '" + imageFile + "': " + messages.firstLine() +
                         "; check that the file can be written");
    }
}

} // namespace

void requireImageFile(const std::string& imageFile) {
    if (!imageFile.ends_with(".svg") && !imageFile.ends_with(".png")) {
        throw InputError("cannot plot into '" + imageFile +
                         "'; give a name that ends in .svg or .png");
    }
}

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

void plot(const PlotRequest& request) {
    requireImageFile(request.imageFile);
    const auto table = CsvTable::read(request.resultsFile);
    std::vector<Curve> curves;
    for (const auto& name : request.columns) {
        curves.push_back(findCurve(table, name));
        requireSomeNumber(table, curves.back());
    }
    runGnuplot(plotScript(table, curves, request.imageFile), request.imageFile);
}

} // namespace program_support
