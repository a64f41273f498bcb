#include "reference_host/cosim_host/quarter_car.h"

#include <cmath>
#include <utility>

namespace cosim_host {

namespace {

constexpr double bodyMass = 400.0;          // kg
constexpr double wheelMass = 40.0;          // kg
constexpr double springStiffness = 25000.0; // N/m
constexpr double damping = 1800.0;          // N s/m
constexpr double weight = (bodyMass + wheelMass) * 9.81;

// Where the run begins. The car rests there on the example tyre as it is; on another one it settles
// first.
constexpr double tyreRadius = 0.32;        // m
constexpr double tyreStiffness = 200000.0; // N/m
constexpr double restingDeflection = weight / tyreStiffness;
constexpr double restingHubHeight = tyreRadius - restingDeflection;
constexpr double restingRollingRadius = tyreRadius - restingDeflection / 3.0; // of free rolling

constexpr double longestSubstep = 1e-4; // s

} // namespace

QuarterCar::QuarterCar(const TyreExchange& tyre, Road road, double speed)
    : tyre_(tyre),
      road_(std::move(road)),
      speed_(speed) {}

void QuarterCar::impose(double time) {
    HubMotion hub;
    hub.distance = speed_ * time;
    hub.height = restingHubHeight + state_.hub;
    hub.speed = speed_;
    hub.verticalVelocity = state_.hubVelocity;
    hub.spin = speed_ / restingRollingRadius;
    hub.roadHeight = road_.height(hub.distance);
    hub.roadHeightRate = speed_ * road_.slope(hub.distance);
    tyre_.impose(hub);
}

void QuarterCar::advance(double from, double to) {
    roadHeight_ = road_.height(speed_ * to);
    const double force = tyre_.verticalForce();
    const double duration = to - from;
    const int substeps = static_cast<int>(std::ceil(duration / longestSubstep));
    for (int i = 0; i < substeps; ++i) {
        state_ = rungeKuttaStep(state_, force, duration / substeps);
    }
}

QuarterCar::State QuarterCar::derivative(const State& state, double tyreForce) {
    const double suspension = springStiffness * (state.hub - state.body) +
                              damping * (state.hubVelocity - state.bodyVelocity);
    return {state.bodyVelocity, suspension / bodyMass, state.hubVelocity,
            (tyreForce - weight - suspension) / wheelMass};
}

QuarterCar::State QuarterCar::moved(const State& state, const State& rate, double duration) {
    return {state.body + duration * rate.body, state.bodyVelocity + duration * rate.bodyVelocity,
            state.hub + duration * rate.hub, state.hubVelocity + duration * rate.hubVelocity};
}

QuarterCar::State QuarterCar::rungeKuttaStep(const State& state, double tyreForce,
                                             double duration) {
    const State k1 = derivative(state, tyreForce);
    const State k2 = derivative(moved(state, k1, duration / 2), tyreForce);
    const State k3 = derivative(moved(state, k2, duration / 2), tyreForce);
    const State k4 = derivative(moved(state, k3, duration), tyreForce);
    State next = moved(state, k1, duration / 6);
    next = moved(next, k2, duration / 3);
    next = moved(next, k3, duration / 3);
    return moved(next, k4, duration / 6);
}

std::vector<Signal> QuarterCar::signals() const {
    std::vector<Signal> signals = tyre_.signals();
    signals.push_back({"body.height", "m", [this] { return state_.body; }});
    signals.push_back({"body.velocity", "m/s", [this] { return state_.bodyVelocity; }});
    signals.push_back({"hub.height", "m", [this] { return state_.hub; }});
    signals.push_back({"hub.velocity", "m/s", [this] { return state_.hubVelocity; }});
    signals.push_back({"road.height", "m", [this] { return roadHeight_; }});
    return signals;
}

} // namespace cosim_host
