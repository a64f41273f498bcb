#pragma once

#include <string>

/// Integer and text parameters, each found by its index.
class Parameters {
  public:
    /// What the host keeps behind the object. The host defines it and owns it.
    struct State;

    /// Makes the object upon `state`, which must outlive it.
    explicit Parameters(State& state);

    /// The integer at `index`; 0 when there is none.
    int getIntParameter(int index) const;

    /// Stores an integer at `index`.
    void setParameter(int index, int value);

    /// The text at `index`; empty when there is none.
    std::string getStringParameter(int index) const;

  private:
    State& state_;
};
