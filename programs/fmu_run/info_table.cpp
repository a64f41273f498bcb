#include "programs/fmu_run/info_table.h"

#include "programs/fmu_run/one_line.h"
#include "programs/support/joined.h"
#include "programs/support/number_text.h"
#include "programs/support/terminal_text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <map>
#include <string_view>
#include <utility>

namespace fmu_run {
namespace {

constexpr std::size_t columnCount = 7;
using Cells = std::array<std::string, columnCount>;

std::string shown(const std::string& text, std::size_t width) {
    return program_support::terminalText(onOneLine(text, width));
}

std::string startOf(const Variable& variable) {
    const auto text = variable.start ? shown(startText(variable), 30) : "-";
    return text.empty() ? "\"\"" : text;
}

Cells cellsOf(const Variable& variable) {
    return {shown(variable.name, 60),
            fmi2_base_type_to_string(variable.type),
            fmi2_causality_to_string(variable.causality),
            fmi2_variability_to_string(variable.variability),
            startOf(variable),
            shown(variable.unit.empty() ? "-" : variable.unit, 20),
            shown(variable.description, 80)};
}

void printRow(std::ostream& stream, const Cells& cells,
              const std::array<std::size_t, columnCount>& widths) {
    std::string line;
    for (std::size_t i = 0; i < columnCount; ++i) {
        line += cells[i] + std::string(widths[i] - widthOf(cells[i]) + 2, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    stream << line << '\n';
}

void printVariables(std::ostream& stream, const std::vector<Variable>& variables) {
    std::vector<Cells> rows{
        {"Name", "Type", "Causality", "Variability", "Start", "Unit", "Description"}};
    std::transform(variables.begin(), variables.end(), std::back_inserter(rows), cellsOf);
    std::array<std::size_t, columnCount> widths{};
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < columnCount; ++i) {
            widths[i] = std::max(widths[i], widthOf(row[i]));
        }
    }
    for (const auto& row : rows) {
        printRow(stream, row, widths);
    }
}

/// "42 (18 input, 12 output, 12 parameter)".
std::string countsOf(const std::vector<Variable>& variables) {
    std::map<std::string, std::size_t> counts;
    for (const auto& variable : variables) {
        ++counts[fmi2_causality_to_string(variable.causality)];
    }
    std::string text;
    for (const auto& [causality, count] : counts) {
        text += (text.empty() ? " (" : ", ") + std::to_string(count) + " " + causality;
    }
    return std::to_string(variables.size()) + text + (text.empty() ? "" : ")");
}

std::string experimentText(const DefaultExperiment& experiment) {
    using program_support::shortNumber;
    return shortNumber(experiment.startTime) + " s to " + shortNumber(experiment.stopTime) +
           " s, step " + shortNumber(experiment.stepSize) + " s";
}

} // namespace

void printInfoTable(std::ostream& stream, const FmuDescription& fmu) {
    const std::vector<std::pair<std::string, std::string>> entries{
        {"Model", fmu.modelName},
        {"Description", fmu.description},
        {"Kind", fmu.kind},
        {"Generation tool", fmu.generationTool},
        {"GUID", fmu.guid},
        {"Platforms", program_support::joined(fmu.platforms, ", ")},
        {"Default experiment", experimentText(fmu.defaultExperiment)},
        {"Variables", countsOf(fmu.variables)}};
    constexpr std::size_t labelWidth = 20;
    for (const auto& [label, text] : entries) {
        stream << label << std::string(labelWidth - label.size(), ' ')
               << (text.empty() ? "-" : shown(text, 200)) << '\n';
    }
    stream << '\n';
    printVariables(stream, fmu.variables);
}

} // namespace fmu_run
