#pragma once

class PhysicalQuantity;
template <typename T>
class TupleArray;

/// Values of one physical quantity.
class Result {
  public:
    /// What the host keeps behind the object. The host defines it and owns it.
    struct State;

    /// Makes the object upon `state`, which must outlive it.
    explicit Result(State& state);

    /// The values; the current one is tuple 0.
    TupleArray<double>* getValues() const;

    /// What the values measure.
    PhysicalQuantity* getPhysicalQuantity() const;

  private:
    State& state_;
};
