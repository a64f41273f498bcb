#include "programs/cosim_host/car.h"

#include <cmath>

namespace cosim_host {

namespace {

constexpr double gravity = 9.81;        // m/s^2
constexpr double longestSubstep = 1e-4; // s

/// In this order left and right can be exchanged without another rounding.
double sum(const PerWheel& values) {
    return (values[0] + values[1]) + (values[2] + values[3]);
}

template <typename State>
State moved(State state, const State& rate, double duration) {
    for (std::size_t i = 0; i < state.size(); ++i) {
        state[i] += duration * rate[i];
    }
    return state;
}

} // namespace

PerWheel Car::loadsAtRest() const {
    const double wheelbase = parameters_.front.distance + parameters_.rear.distance;
    const double bodyWeight = parameters_.bodyMass * gravity;
    const double front = bodyWeight * parameters_.rear.distance / wheelbase / 2.0 +
                         parameters_.front.wheelMass * gravity;
    const double rear = bodyWeight * parameters_.front.distance / wheelbase / 2.0 +
                        parameters_.rear.wheelMass * gravity;
    return {front, front, rear, rear};
}

double Car::forward(std::size_t wheel) const {
    return wheel < 2 ? parameters_.front.distance : -parameters_.rear.distance;
}

double Car::left(std::size_t wheel) const {
    return (wheel % 2 == 0 ? 0.5 : -0.5) * axle(wheel).track;
}

void Car::advance(const PerWheel& tyreForces, double duration) {
    const int substeps = static_cast<int>(std::ceil(duration / longestSubstep));
    for (int i = 0; i < substeps; ++i) {
        state_ = rungeKuttaStep(state_, tyreForces, duration / substeps);
    }
}

Car::Travel Car::travel(const State& state, std::size_t wheel) const {
    const auto nearer = [&](std::size_t first) {
        const double body = state[first] - forward(wheel) * state[first + 2];
        return state[first + firstHub + wheel] - (body + left(wheel) * state[first + 1]);
    };
    return {nearer(0), nearer(degreesOfFreedom)};
}

Car::State Car::rates(const State& state, const PerWheel& tyreForces) const {
    const PerWheel loads = loadsAtRest();
    PerWheel suspension{};
    PerWheel rollMoments{};
    PerWheel pitchMoments{};
    State rates{};
    for (std::size_t i = 0; i < wheelCount; ++i) {
        const auto [way, rate] = travel(state, i);
        suspension[i] = axle(i).springStiffness * way + axle(i).damping * rate;
        rollMoments[i] = left(i) * suspension[i];
        pitchMoments[i] = -forward(i) * suspension[i];
        rates[degreesOfFreedom + firstHub + i] =
            (tyreForces[i] - loads[i] - suspension[i]) / axle(i).wheelMass;
    }
    for (std::size_t i = 0; i < degreesOfFreedom; ++i) {
        rates[i] = state[degreesOfFreedom + i];
    }
    rates[degreesOfFreedom] = sum(suspension) / parameters_.bodyMass;
    rates[degreesOfFreedom + 1] = sum(rollMoments) / parameters_.rollInertia;
    rates[degreesOfFreedom + 2] = sum(pitchMoments) / parameters_.pitchInertia;
    return rates;
}

Car::State Car::rungeKuttaStep(const State& state, const PerWheel& tyreForces,
                               double duration) const {
    const State k1 = rates(state, tyreForces);
    const State k2 = rates(moved(state, k1, duration / 2), tyreForces);
    const State k3 = rates(moved(state, k2, duration / 2), tyreForces);
    const State k4 = rates(moved(state, k3, duration), tyreForces);
    State next = moved(state, k1, duration / 6);
    next = moved(next, k2, duration / 3);
    next = moved(next, k3, duration / 3);
    return moved(next, k4, duration / 6);
}

} // namespace cosim_host
