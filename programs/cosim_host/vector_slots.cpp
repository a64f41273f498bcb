#include "programs/cosim_host/vector_slots.h"

namespace cosim_host {

namespace {

/// `add` makes the array of a condition or result with the given name and number of components.
template <typename Add>
VectorSlots makeSlots(const std::string& name, bool arrays, Add add) {
    if (arrays) {
        TupleArray<double>& values = add(name, 3);
        return {Slot(values, 0), Slot(values, 1), Slot(values, 2)};
    }
    return {Slot(add(componentName(name, 0), 1), 0), Slot(add(componentName(name, 1), 1), 0),
            Slot(add(componentName(name, 2), 1), 0)};
}

} // namespace

std::string componentName(const std::string& name, int component) {
    return name + "[" + std::to_string(component + 1) + "]";
}

VectorSlots addInputVector(reference_host::Simulation& simulation, const std::string& name,
                           bool arrays) {
    return makeSlots(name, arrays, [&](const std::string& slot, int size) -> TupleArray<double>& {
        return simulation.addCoupledCondition(slot, size);
    });
}

VectorSlots addOutputVector(reference_host::Simulation& simulation, const std::string& name,
                            bool arrays) {
    return makeSlots(name, arrays, [&](const std::string& slot, int size) -> TupleArray<double>& {
        return simulation.addOutputResult(slot, slot, size);
    });
}

} // namespace cosim_host
