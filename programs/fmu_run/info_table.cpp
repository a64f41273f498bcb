#include "fmu_run/information.h"
#include "program_support/number_text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>

namespace fmu_run {
namespace {

constexpr std::size_t columnCount = 7;
using Cells = std::array<std::string, columnCount>;

/// Characters that a terminal shows for UTF-8 text: its bytes but those that continue a character.
std::size_t widthOf(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<std::uint8_t>(c) & 0xC0) != 0x80;
    }));
}

/// A model's texts may hold line breaks and worse; a table has one line for each row.
std::string onOneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(),
        [](char c) { return static_cast<std::uint8_t>(c) < 0x20 || c == 0x7F; }, ' ');
    return text;
}

std::string startOf(const Variable& variable) {
    const auto text = onOneLine(variable.start.value_or("-"));
    return text.empty() ? "\"\"" : text;
}

Cells cellsOf(const Variable& variable) {
    return {onOneLine(variable.name),
            std::string(typeName(variable.type)),
            variable.causality,
            variable.variability,
            startOf(variable),
            onOneLine(variable.unit.empty() ? "-" : variable.unit),
            onOneLine(variable.description)};
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
        ++counts[variable.causality];
    }
    std::string text;
    for (const auto& [causality, count] : counts) {
        text += (text.empty() ? " (" : ", ") + std::to_string(count) + " " + causality;
    }
    return std::to_string(variables.size()) + text + (text.empty() ? "" : ")");
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const auto& word : words) {
        text += (text.empty() ? "" : ", ") + word;
    }
    return text;
}

std::string experimentText(const DefaultExperiment& experiment) {
    using program_support::shortNumber;
    return shortNumber(experiment.startTime) + " s to " + shortNumber(experiment.stopTime) +
           " s, step " + shortNumber(experiment.stepSize) + " s";
}

} // namespace

void printInfoTable(std::ostream& stream, const ModelInformation& model) {
    const std::vector<std::pair<std::string, std::string>> entries{
        {"Model", model.modelName},
        {"Description", model.description},
        {"Kind", model.kind},
        {"Generation tool", model.generationTool},
        {"GUID", model.guid},
        {"Platforms", joined(model.platforms)},
        {"Default experiment", experimentText(model.defaultExperiment)},
        {"Variables", countsOf(model.variables)}};
    constexpr std::size_t labelWidth = 20;
    for (const auto& [label, text] : entries) {
        stream << label << std::string(labelWidth - label.size(), ' ')
               << (text.empty() ? "-" : onOneLine(text)) << '\n';
    }
    stream << '\n';
    printVariables(stream, model.variables);
}

} // namespace fmu_run
