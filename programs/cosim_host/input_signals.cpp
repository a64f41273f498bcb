#include "programs/cosim_host/input_signals.h"

#include <string_view>
#include <utility>

namespace cosim_host {

using program_support::CsvTable;
using reference_host::Simulation;

namespace {

/// "F" for "F[1]"; nothing for every other name.
std::optional<std::string> vectorBeginningWith(const std::string& name) {
    constexpr std::string_view first = "[1]";
    if (name.size() <= first.size() || !name.ends_with(first)) {
        return std::nullopt;
    }
    return name.substr(0, name.size() - first.size());
}

void addSignals(Simulation& simulation, const OutputRequest& request,
                std::vector<Signal>& signals) {
    TupleArray<double>& values =
        simulation.addOutputResult(request.name, request.quantity, request.size);
    for (int i = 0; i < request.size; ++i) {
        const Slot slot(values, i);
        signals.push_back({request.size == 1 ? request.name : componentName(request.name, i), "-",
                           [slot] { return slot.value(); }});
    }
}

} // namespace

InputSignals::InputSignals(Simulation& simulation, std::optional<CsvTable> table,
                           const std::vector<OutputRequest>& outputs, bool arrays)
    : table_(std::move(table)) {
    if (table_) {
        addConditions(simulation, arrays);
    }
    for (const OutputRequest& request : outputs) {
        addSignals(simulation, request, signals_);
    }
}

void InputSignals::addConditions(Simulation& simulation, bool arrays) {
    const std::vector<std::string>& names = table_->names();
    for (std::size_t i = 1; i < names.size(); ++i) {
        table_->requireNumbers(i);
    }
    std::size_t column = 1;
    while (column < names.size()) {
        if (arrays && addVector(simulation, column)) {
            column += 3;
        } else {
            columns_.push_back({column, Slot(simulation.addCoupledCondition(names[column], 1), 0)});
            ++column;
        }
    }
}

bool InputSignals::addVector(Simulation& simulation, std::size_t firstColumn) {
    const std::vector<std::string>& names = table_->names();
    const std::optional<std::string> name = vectorBeginningWith(names[firstColumn]);
    if (!name || firstColumn + 2 >= names.size() ||
        names[firstColumn + 1] != componentName(*name, 1) ||
        names[firstColumn + 2] != componentName(*name, 2)) {
        return false;
    }
    const VectorSlots slots = addInputVector(simulation, *name, true);
    for (std::size_t i = 0; i < slots.size(); ++i) {
        columns_.push_back({firstColumn + i, slots[i]});
    }
    return true;
}

void InputSignals::impose(double time) {
    for (const Column& column : columns_) {
        column.slot.setValue(table_->interpolateLinearly(column.index, time));
    }
}

void InputSignals::advance(double /*from*/, double /*to*/) {}

std::vector<Signal> InputSignals::signals() const {
    return signals_;
}

} // namespace cosim_host
