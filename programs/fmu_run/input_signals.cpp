#include "fmu_run/input_signals.h"

#include "program_support/input_error.h"

namespace fmu_run {

using program_support::CsvTable;
using program_support::InputError;

namespace {

bool canBeSetDuringRun(const Variable& variable) {
    return variable.causality == "input" ||
           (variable.causality == "parameter" && variable.variability == "tunable");
}

} // namespace

InputSignals::InputSignals(const std::string& path, const ModelInformation& model)
    : table_(CsvTable::read(path)) {
    for (std::size_t column = 1; column < table_.names().size(); ++column) {
        signals_.push_back(signalOf(model, column));
    }
}

InputSignals::Signal InputSignals::signalOf(const ModelInformation& model,
                                            std::size_t column) const {
    const auto& name = table_.names()[column];
    const std::string place = "column '" + name + "' of '" + table_.path() + "'";
    const auto& variable = requireVariable(model, name, place);
    if (!canBeSetDuringRun(variable)) {
        throw InputError(place + " is no input of the FMU but of causality " + variable.causality +
                         "; remove the column");
    }
    const bool interpolated =
        variable.type == VariableType::Real && variable.variability == "continuous";
    if (interpolated) {
        table_.requireNumbers(column);
        return {name, column, true, {}};
    }
    return {name, column, false, heldValues(variable, column)};
}

std::vector<VariableValue> InputSignals::heldValues(const Variable& variable,
                                                    std::size_t column) const {
    std::vector<VariableValue> values;
    values.reserve(table_.rowCount());
    for (std::size_t row = 0; row < table_.rowCount(); ++row) {
        values.push_back(
            parseValue(table_.text(row, column), variable.type,
                       table_.place(row) + ": the value in column '" + variable.name + "'"));
    }
    return values;
}

void InputSignals::apply(FmiToolsInstance* fmu, double time) const {
    for (const auto& signal : signals_) {
        if (signal.interpolated) {
            setVariable(fmu, signal.name, table_.interpolateLinearly(signal.column, time));
        } else {
            setVariable(fmu, signal.name, signal.rows[table_.rowAt(time)]);
        }
    }
}

} // namespace fmu_run
