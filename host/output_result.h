#pragma once

#include "host/object.h"

class Result;

/// A quantity that the host wants from the solver; its name is that of the solver's output.
class OutputResult : public Object {
  public:
    /// What the host keeps behind the object. The host defines it and owns it.
    struct State;

    /// Makes the object upon `state`, which must outlive it.
    explicit OutputResult(State& state);

    /// Where the solver puts the values.
    Result* getResult() const;

  private:
    State& state_;
};
