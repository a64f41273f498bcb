#include "programs/cosim_host/quarter_car.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace cosim_host {

namespace {

constexpr double gravity = 9.81;        // m/s^2
constexpr double longestSubstep = 1e-4; // s

} // namespace

QuarterCar::QuarterCar(const TyreExchange& tyre, const QuarterCarParameters& parameters, Road road,
                       double speed)
    : tyre_(tyre),
      parameters_(parameters),
      road_(std::move(road)),
      speed_(speed) {}

double QuarterCar::weight() const {
    return (parameters_.bodyMass + parameters_.wheelMass) * gravity;
}

/// The car begins at rest on a tyre as its parameters say; on another one it settles first.
double QuarterCar::restingDeflection() const {
    return weight() / parameters_.tyreStiffness;
}

void QuarterCar::impose(double time) {
    HubMotion hub;
    hub.distance = speed_ * time;
    hub.height = parameters_.tyreRadius - restingDeflection() + state_.hub;
    hub.speed = speed_;
    hub.verticalVelocity = state_.hubVelocity;
    hub.spin = speed_ / (parameters_.tyreRadius - restingDeflection() / 3.0); // rolling freely
    hub.roadHeight = road_.height(hub.distance);
    hub.roadHeightRate = speed_ * road_.slope(hub.distance);
    tyre_.impose(hub);
    forceAtBegin_ = tyre_.verticalForce();
}

void QuarterCar::advance(double from, double to) {
    roadHeight_ = road_.height(speed_ * to);
    state_ = held(state_, (forceAtBegin_ + tyre_.verticalForce()) / 2.0, to - from);
}

/// The state after `duration` under that force.
QuarterCar::State QuarterCar::held(State state, double tyreForce, double duration) const {
    const int substeps = static_cast<int>(std::ceil(duration / longestSubstep));
    for (int i = 0; i < substeps; ++i) {
        state = rungeKuttaStep(state, tyreForce, duration / substeps);
    }
    return state;
}

std::string QuarterCar::warningAbout(double stepSize) const {
    return settlingWarning(stepSize, [this](double step) { return stepMatrix(step); });
}

/// States are those of the car and the deflection that the tyre's last force stands for. The tyre
/// lets the hub move on with its velocity over the step.
StepMatrix QuarterCar::stepMatrix(double stepSize) const {
    constexpr std::size_t size = 5;
    StepMatrix matrix(size, std::vector<double>(size));
    for (std::size_t j = 0; j < size; ++j) {
        std::array<double, size> begin{};
        begin[j] = 1.0;
        const State state{begin[0], begin[1], begin[2], begin[3]};
        const double deflection =
            -(state.hub + stepSize * state.hubVelocity) -
            parameters_.tyreDamping / parameters_.tyreStiffness * state.hubVelocity;
        const double force = parameters_.tyreStiffness * (begin[4] + deflection) / 2.0;
        const State end = held(state, weight() + force, stepSize);
        const std::array<double, size> column = {end.body, end.bodyVelocity, end.hub,
                                                 end.hubVelocity, deflection};
        for (std::size_t i = 0; i < size; ++i) {
            matrix[i][j] = column[i];
        }
    }
    return matrix;
}

QuarterCar::State QuarterCar::derivative(const State& state, double tyreForce) const {
    const double suspension = parameters_.springStiffness * (state.hub - state.body) +
                              parameters_.damping * (state.hubVelocity - state.bodyVelocity);
    return {state.bodyVelocity, suspension / parameters_.bodyMass, state.hubVelocity,
            (tyreForce - weight() - suspension) / parameters_.wheelMass};
}

QuarterCar::State QuarterCar::moved(const State& state, const State& rate, double duration) {
    return {state.body + duration * rate.body, state.bodyVelocity + duration * rate.bodyVelocity,
            state.hub + duration * rate.hub, state.hubVelocity + duration * rate.hubVelocity};
}

QuarterCar::State QuarterCar::rungeKuttaStep(const State& state, double tyreForce,
                                             double duration) const {
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
