#pragma once

#include "programs/cosim_host/signal.h"

#include <vector>

namespace cosim_host {

/// The host's side of the coupling: what it imposes on the solver, and what it makes of the answer.
class HostModel {
  public:
    HostModel() = default;
    virtual ~HostModel() = default;
    HostModel(const HostModel&) = delete;
    HostModel& operator=(const HostModel&) = delete;
    HostModel(HostModel&&) = delete;
    HostModel& operator=(HostModel&&) = delete;

    /// Puts the values at `time` (seconds) into the coupled conditions.
    virtual void impose(double time) = 0;

    /// Advances the host's own equations over a communication step (seconds), with the output
    /// results as the solver left them.
    virtual void advance(double from, double to) = 0;

    /// What the run shows: the output results, and the host's own state. They look into this model
    /// and end with it.
    [[nodiscard]] virtual std::vector<Signal> signals() const = 0;
};

} // namespace cosim_host
