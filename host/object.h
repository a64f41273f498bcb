#pragma once

#include <string>

/// Anything of the host's data model that has a name.
class Object {
  public:
    /// What the host keeps behind the object. The host defines it and owns it.
    struct State;

    /// Makes the object upon `state`, which must outlive it.
    explicit Object(State& state);

    /// The name, as the host's model spells it.
    std::string getName() const;

  private:
    State& state_;
};
