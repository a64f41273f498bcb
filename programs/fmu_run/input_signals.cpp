#include "programs/fmu_run/input_signals.h"

#include "programs/fmu_run/shared_references.h"
#include "programs/fmu_run/variable_lookup.h"
#include "programs/support/input_error.h"

#include <string_view>
#include <unordered_map>

namespace fmu_run {

using program_support::CsvTable;
using program_support::InputError;

namespace {

bool canBeSetDuringRun(const Variable& variable) {
    return variable.causality == fmi2_causality_enu_input ||
           (variable.causality == fmi2_causality_enu_parameter &&
            variable.variability == fmi2_variability_enu_tunable);
}

} // namespace

InputSignals::InputSignals(const std::string& path, const FmuDescription& model, bool quiet)
    : table_(CsvTable::read(path)) {
    // Both the file's columns and the FMU's variables may be many.
    std::unordered_map<std::string_view, const Variable*> variables;
    for (const auto& variable : model.variables) {
        variables.emplace(variable.name, &variable);
    }
    const SharedReferences references(model);
    for (std::size_t column = 1; column < table_.names().size(); ++column) {
        const auto& name = table_.names()[column];
        const auto found = variables.find(name);
        const auto& variable = found != variables.end()
                                   ? *found->second
                                   : requireVariable(model, name, placeOf(column));
        signals_.push_back(signalOf(variable, column));
        references.requireOwn(variable, placeOf(column), quiet);
    }
    readHeldValues();
}

std::string InputSignals::placeOf(std::size_t column) const {
    return "column '" + table_.names()[column] + "' of '" + table_.path() + "'";
}

InputSignals::Signal InputSignals::signalOf(const Variable& variable, std::size_t column) const {
    if (!canBeSetDuringRun(variable)) {
        throw InputError(placeOf(column) + " is no input of the FMU but of causality " +
                         fmi2_causality_to_string(variable.causality) + "; remove the column");
    }
    const bool interpolated = variable.type == fmi2_base_type_real &&
                              variable.variability == fmi2_variability_enu_continuous;
    if (interpolated) {
        table_.requireNumbers(column);
    }
    return {&variable, variable.name, column, interpolated, {}};
}

/// Row by row: the texts of a row are taken apart once for all of its columns.
void InputSignals::readHeldValues() {
    for (std::size_t row = 0; row < table_.rowCount(); ++row) {
        const auto texts = table_.texts(row);
        for (auto& signal : signals_) {
            if (!signal.interpolated) {
                signal.rows.push_back(
                    parseValue(texts[signal.column], signal.variable->type,
                               table_.place(row) + ": the value in column '" + signal.name + "'"));
            }
        }
    }
}

void InputSignals::apply(FmiToolsInstance* fmu, double time) const {
    for (const auto& signal : signals_) {
        if (signal.interpolated) {
            setVariable(fmu, signal.name, table_.interpolateLinearly(signal.column, time), time);
        } else {
            setVariable(fmu, signal.name, signal.rows[table_.rowAt(time)], time);
        }
    }
}

} // namespace fmu_run
