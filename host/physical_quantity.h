#pragma once

#include "host/object.h"

/// The kind of thing that a result measures, such as a force or a pressure.
class PhysicalQuantity : public Object {
  public:
    /// What the host keeps behind the object. The host defines it and owns it.
    struct State;

    /// Makes the object upon `state`, which must outlive it.
    explicit PhysicalQuantity(State& state);

    /// Number of components of one value: 1 for a scalar.
    int getSize() const;

  private:
    State& state_;
};
