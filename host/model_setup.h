#pragma once

#include <cstddef>

class CoupledCondition;
class OutputResult;

/// What the host's model exchanges with the solver.
class ModelSetup {
  public:
    /// What the host keeps behind the object. The host defines it and owns it.
    struct State;

    /// Makes the object upon `state`, which must outlive it.
    explicit ModelSetup(State& state);

    /// Number of quantities that the model imposes on the solver.
    std::size_t getNumberOfCoupledConditions() const;

    /// The coupled condition at `index`, counted from 0 and below their number.
    CoupledCondition* getCoupledCondition(std::size_t index) const;

    /// Number of quantities that the model wants from the solver.
    std::size_t getNumberOfOutputResults() const;

    /// The output result at `index`, counted from 0 and below their number.
    OutputResult* getOutputResult(std::size_t index) const;

  private:
    State& state_;
};
