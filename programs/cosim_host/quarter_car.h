#pragma once

#include "programs/cosim_host/host_model.h"
#include "programs/cosim_host/road.h"
#include "programs/cosim_host/settling.h"
#include "programs/cosim_host/tyre_exchange.h"
#include "programs/cosim_host/vehicle_parameters.h"

#include <string>
#include <vector>

namespace cosim_host {

/// A quarter of a car at constant speed: a body on spring and damper above a wheel that the
/// solver's tyre carries.
///
/// With b and w for how far body and hub are above where they rest:
///     bodyMass * b''  = suspension
///     wheelMass * w'' = tyre force - weight of both - suspension
///     suspension = springStiffness * (w - b) + damping * (w' - b')
///
/// Over a communication step the tyre's force is held: the mean of what the solver left at its begin
/// and at its end.
class QuarterCar : public HostModel {
  public:
    QuarterCar(const TyreExchange& tyre, const QuarterCarParameters& parameters, Road road,
               double speed);

    void impose(double time) override;
    void advance(double from, double to) override;
    [[nodiscard]] std::vector<Signal> signals() const override;

    /// One line about a communication step (seconds) that is too long for the wheel to settle on its
    /// tyre, which is reckoned to be as the parameters say; empty for one that is not.
    [[nodiscard]] std::string warningAbout(double stepSize) const;

  private:
    /// Heights over where they rest in m, velocities in m/s.
    struct State {
        double body = 0.0;
        double bodyVelocity = 0.0;
        double hub = 0.0;
        double hubVelocity = 0.0;
    };

    [[nodiscard]] double weight() const;
    [[nodiscard]] double restingDeflection() const;
    [[nodiscard]] StepMatrix stepMatrix(double stepSize) const;
    [[nodiscard]] State held(State state, double tyreForce, double duration) const;
    [[nodiscard]] State derivative(const State& state, double tyreForce) const;
    static State moved(const State& state, const State& rate, double duration);
    [[nodiscard]] State rungeKuttaStep(const State& state, double tyreForce, double duration) const;

    TyreExchange tyre_;
    QuarterCarParameters parameters_;
    Road road_;
    double speed_;
    double forceAtBegin_ = 0.0; ///< Of the tyre, where the communication step begins, in N.
    double roadHeight_ = 0.0;   ///< At the last communication point, in m.
    State state_;
};

} // namespace cosim_host
