#include "programs/support/plot_script.h"

#include "programs/support/number_text.h"
#include "programs/support/terminal_text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace program_support {
namespace {

/// Told apart on white, also by people who do not see all colours.
constexpr std::array colours{"#0072B2", "#D55E00", "#009E73", "#CC79A7",
                             "#E69F00", "#56B4E9", "#882255", "#444444"};

/// A picture is no wider than this, so a curve needs no more pairs of points.
constexpr std::size_t mostPairs = 1500;

/// A text that gnuplot takes as it is: within double quotes, but nothing is left in it that has a
/// meaning to any of gnuplot's readers. (Within single quotes not even the doubled quote is safe: at
/// the beginning it ends the text.)
std::string quoted(const std::string& text) {
    constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ "
                                       "0123456789[]._-";
    std::string result = "\"";
    for (const char character : terminalText(text)) {
        if (plain.find(character) != std::string_view::npos) {
            result += character;
        } else {
            const auto code = static_cast<std::uint8_t>(character);
            result += '\\';
            for (const unsigned shift : {6U, 3U, 0U}) {
                result += static_cast<char>('0' + (code >> shift & 7U));
            }
        }
    }
    return result + '"';
}

using Panels = std::vector<std::vector<Curve>>;

/// The curves by unit, in the order in which the units come first.
Panels panelsOf(const std::vector<Curve>& curves) {
    Panels panels;
    for (const auto& curve : curves) {
        const auto found = std::find_if(panels.begin(), panels.end(), [&](const auto& panel) {
            return panel.front().unit == curve.unit;
        });
        found == panels.end() ? panels.push_back({curve}) : found->push_back(curve);
    }
    return panels;
}

std::string dataName(const Curve& curve) {
    return "$column" + std::to_string(curve.column);
}

std::string point(const CsvTable& table, std::size_t row, double value) {
    return shortNumber(table.time(row)) + ' ' + shortNumber(value) + '\n';
}

/// The smallest and the largest value of some rows, in the order of time: no peak is lost when many
/// rows fall onto one point of the picture.
std::string extremes(const CsvTable& table, std::size_t column, std::size_t begin,
                     std::size_t end) {
    std::optional<std::size_t> smallest;
    std::optional<std::size_t> largest;
    for (std::size_t row = begin; row < end; ++row) {
        const auto number = table.number(row, column);
        if (!number) {
            continue;
        }
        if (!smallest || *number < table.value(*smallest, column)) {
            smallest = row;
        }
        if (!largest || *number > table.value(*largest, column)) {
            largest = row;
        }
    }
    if (!smallest) {
        return {};
    }
    const auto [first, second] = std::minmax(*smallest, *largest);
    const auto text = point(table, first, table.value(first, column));
    return first == second ? text : text + point(table, second, table.value(second, column));
}

std::string dataBlock(const CsvTable& table, const Curve& curve) {
    const std::size_t rowsInOne = std::max<std::size_t>(table.rowCount() / mostPairs, 1);
    std::string block = dataName(curve) + " << END_OF_DATA\n";
    for (std::size_t row = 0; row < table.rowCount(); row += rowsInOne) {
        block += extremes(table, curve.column, row, std::min(row + rowsInOne, table.rowCount()));
    }
    return block + "END_OF_DATA\n";
}

std::string panelCommands(const std::vector<Curve>& panel, bool last) {
    std::string text = "set ylabel " + quoted("[" + panel.front().unit + "]") + "\n";
    text += last ? "set xlabel 'time [s]'\n" : "unset xlabel\n";
    std::string separator = "plot ";
    for (std::size_t i = 0; i < panel.size(); ++i) {
        text += separator + dataName(panel[i]) +
                " using 1:2 with lines linewidth 2 linecolor rgb '" + colours[i % colours.size()] +
                "' title " + quoted(panel[i].name);
        separator = ", \\\n  ";
    }
    return text + "\n";
}

std::string terminalCommand(const std::string& imageFile, std::size_t panelCount) {
    const auto size = " size 1100," + std::to_string(100 + 280 * panelCount);
    return imageFile.ends_with(".png")
               ? "set terminal pngcairo noenhanced background 'white' font 'Sans,11'" + size
               : "set terminal svg noenhanced background 'white' font 'Sans,14'" + size;
}

/// The same time axis below every panel, room for the longest name beside them. The last command is
/// open for a title.
std::string layoutCommands(const CsvTable& table, const std::vector<Curve>& curves,
                           std::size_t panelCount) {
    std::size_t longest = 0;
    for (const auto& curve : curves) {
        longest = std::max(longest, curve.name.size());
    }
    std::string text = "set grid linetype 1 linewidth 1 linecolor rgb '#cccccc'\n"
                       "set key at graph 1.02, graph 1 left top Left reverse samplen 2\nset "
                       "lmargin 12\nset rmargin " +
                       std::to_string(std::min<std::size_t>(longest, 60) + 8) + "\n";
    const double begin = table.time(0);
    const double end = table.time(table.rowCount() - 1);
    if (begin < end) {
        text += "set xrange [" + shortNumber(begin) + ":" + shortNumber(end) + "]\n";
    }
    // Room above and below, so that no curve lies on the frame.
    text += "set offsets graph 0, graph 0, graph 0.05, graph 0.05\n";
    return text + "set multiplot layout " + std::to_string(panelCount) + ",1";
}

} // namespace

std::string plotScript(const CsvTable& table, const std::vector<Curve>& curves,
                       const std::string& imageFile, const std::string& title) {
    const auto panels = panelsOf(curves);
    std::string script = "set encoding utf8\n" + terminalCommand(imageFile, panels.size()) +
                         "\nset output " + quoted(imageFile) + "\n";
    for (const auto& curve : curves) {
        script += dataBlock(table, curve);
    }
    script += layoutCommands(table, curves, panels.size());
    script += title.empty() ? "\n" : " title " + quoted(title) + "\n";
    for (const auto& panel : panels) {
        script += panelCommands(panel, &panel == &panels.back());
    }
    return script + "unset multiplot\nunset output\n";
}

} // namespace program_support
