#pragma once

class Options;
class Parameters;

/// Settings of one solver.
class SolverSettings {
  public:
    /// What the host keeps behind the object. The host defines it and owns it.
    struct State;

    /// Makes the object upon `state`, which must outlive it.
    explicit SolverSettings(State& state);

    /// The solver's parameters.
    Parameters* getSolverSettingParameters() const;

    /// The solver's options.
    Options* getSolverSettingOptions() const;

  private:
    State& state_;
};
