#pragma once

#include "host/object.h"

class Result;

/// A quantity that the host's model imposes on the solver; its name is that of the solver's input.
class CoupledCondition : public Object {
  public:
    /// What the host keeps behind the object. The host defines it and owns it.
    struct State;

    /// Makes the object upon `state`, which must outlive it.
    explicit CoupledCondition(State& state);

    /// The values that the host imposes.
    Result* getResult() const;

  private:
    State& state_;
};
