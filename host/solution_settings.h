#pragma once

class Options;
class Parameters;

/// Settings of a whole run.
class SolutionSettings {
  public:
    /// What the host keeps behind the object. The host defines it and owns it.
    struct State;

    /// Makes the object upon `state`, which must outlive it.
    explicit SolutionSettings(State& state);

    /// The run's parameters.
    Parameters* getParameters() const;

    /// The run's options.
    Options* getOptions() const;

  private:
    State& state_;
};
