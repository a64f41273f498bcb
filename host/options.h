#pragma once

/// Switches, each found by its index.
class Options {
  public:
    /// What the host keeps behind the object. The host defines it and owns it.
    struct State;

    /// Makes the object upon `state`, which must outlive it.
    explicit Options(State& state);

    /// The switch at `index`; false when it was never set.
    bool getOption(int index) const;

  private:
    State& state_;
};
