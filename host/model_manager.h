#pragma once

class Solution;

/// The host's entry to a model and its run.
class ModelManager {
  public:
    /// What the host keeps behind the object. The host defines it and owns it.
    struct State;

    /// Makes the object upon `state`, which must outlive it.
    explicit ModelManager(State& state);

    /// The run.
    Solution* getSolution() const;

  private:
    // A solver finds its settings, its model and its model set-up here.
    friend class Solver;

    State& state_;
};
