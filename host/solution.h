#pragma once

class SolutionSettings;

/// One run of the host.
class Solution {
  public:
    /// What the host keeps behind the object. The host defines it and owns it.
    struct State;

    /// Makes the object upon `state`, which must outlive it.
    explicit Solution(State& state);

    /// Settings of the run.
    SolutionSettings* getSolutionSettings() const;

  private:
    State& state_;
};
