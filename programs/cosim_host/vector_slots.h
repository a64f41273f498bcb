#pragma once

#include "host/tuple_array.h"
#include "reference_host/simulation.h"

#include <array>
#include <string>

namespace cosim_host {

/// One component of a coupled condition or an output result: a place for one number.
class Slot {
  public:
    /// `values` stays the simulation's.
    Slot(TupleArray<double>& values, int component) : values_(&values), component_(component) {}

    [[nodiscard]] double value() const { return values_->getValue(0, component_); }

    void setValue(double value) const { values_->setValue(0, component_, value); }

  private:
    TupleArray<double>* values_;
    int component_;
};

using VectorSlots = std::array<Slot, 3>;

/// "name[1]", "name[2]" and so on: how solvers call the components of a vector, counted from 0
/// here.
std::string componentName(const std::string& name, int component);

/// The three components of an input vector: of one coupled condition where the solver takes vectors
/// apart itself, else of three conditions with the components' names.
VectorSlots addInputVector(reference_host::Simulation& simulation, const std::string& name,
                           bool arrays);

/// The same for an output vector.
VectorSlots addOutputVector(reference_host::Simulation& simulation, const std::string& name,
                            bool arrays);

} // namespace cosim_host
