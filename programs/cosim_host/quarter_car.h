#pragma once

#include "reference_host/cosim_host/host_model.h"
#include "reference_host/cosim_host/road.h"
#include "reference_host/cosim_host/tyre_exchange.h"

namespace cosim_host {

/// A quarter of a car at constant speed: a body on spring and damper above a wheel that the
/// solver's tyre carries.
///
/// With b and w for how far body and hub are above where they rest:
///     bodyMass * b''  = suspension
///     wheelMass * w'' = tyre force - weight of both - suspension
///     suspension = springStiffness * (w - b) + damping * (w' - b')
///
/// Over a communication step the tyre's force is held, as the solver left it.
class QuarterCar : public HostModel {
  public:
    QuarterCar(const TyreExchange& tyre, Road road, double speed);

    void impose(double time) override;
    void advance(double from, double to) override;
    [[nodiscard]] std::vector<Signal> signals() const override;

  private:
    /// Heights over where they rest in m, velocities in m/s.
    struct State {
        double body = 0.0;
        double bodyVelocity = 0.0;
        double hub = 0.0;
        double hubVelocity = 0.0;
    };

    static State derivative(const State& state, double tyreForce);
    static State moved(const State& state, const State& rate, double duration);
    static State rungeKuttaStep(const State& state, double tyreForce, double duration);

    TyreExchange tyre_;
    Road road_;
    double speed_;
    double roadHeight_ = 0.0; ///< At the last communication point, in m.
    State state_;
};

} // namespace cosim_host
