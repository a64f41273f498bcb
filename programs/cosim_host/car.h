#pragma once

#include "programs/cosim_host/vehicle_parameters.h"

#include <array>
#include <cstddef>

namespace cosim_host {

/// The wheels in their order: front left, front right, rear left, rear right.
inline constexpr std::size_t wheelCount = 4;

/// A value for each wheel.
using PerWheel = std::array<double, wheelCount>;

/// Heave, roll and pitch of a body on four springs and dampers, and the four wheels below it, as
/// deviations from where the car rests. SI units; angles are small ones about the axes that point
/// forward (roll: the left side rises) and to the left (pitch: the nose sinks).
///
/// With c for the height of the body above a wheel that is x in front of the centre of mass and y to
/// the left of it, and w for the height of that wheel:
///     c = heave + y * roll - x * pitch
///     suspension = springStiffness * (w - c) + damping * (w' - c')
///     bodyMass * heave''      = sum of suspension
///     rollInertia * roll''    = sum of y * suspension
///     pitchInertia * pitch''  = -sum of x * suspension
///     wheelMass * w''         = tyre force - load at rest - suspension
///
/// A car whose left and right are exchanged moves in the same way to the last bit, mirrored.
class Car {
  public:
    static constexpr std::size_t firstHub = 3;
    static constexpr std::size_t degreesOfFreedom = firstHub + wheelCount;
    static constexpr std::size_t stateCount = 2 * degreesOfFreedom;

    /// Heave, roll, pitch and hubs, then their rates.
    using State = std::array<double, stateCount>;

    explicit Car(const CarParameters& parameters, const State& state = {})
        : parameters_(parameters),
          state_(state) {}

    [[nodiscard]] const State& state() const { return state_; }

    /// The vertical force of each tyre that carries the car at rest, in N.
    [[nodiscard]] PerWheel loadsAtRest() const;

    /// Where a wheel is in front of the centre of mass and to the left of it, in m.
    [[nodiscard]] double forward(std::size_t wheel) const;
    [[nodiscard]] double left(std::size_t wheel) const;

    /// Advances by `duration` seconds under the vertical forces of the tyres (N).
    void advance(const PerWheel& tyreForces, double duration);

    [[nodiscard]] double heave() const { return state_[0]; }

    [[nodiscard]] double roll() const { return state_[1]; }

    [[nodiscard]] double pitch() const { return state_[2]; }

    [[nodiscard]] double hub(std::size_t wheel) const { return state_[firstHub + wheel]; }

    [[nodiscard]] double hubVelocity(std::size_t wheel) const {
        return state_[degreesOfFreedom + firstHub + wheel];
    }

  private:
    /// What a spring and damper work with: how much nearer the wheel is to the body, and how fast it
    /// comes nearer.
    struct Travel {
        double travel;
        double rate;
    };

    [[nodiscard]] Travel travel(const State& state, std::size_t wheel) const;
    [[nodiscard]] State rates(const State& state, const PerWheel& tyreForces) const;
    [[nodiscard]] State rungeKuttaStep(const State& state, const PerWheel& tyreForces,
                                       double duration) const;

    [[nodiscard]] const AxleParameters& axle(std::size_t wheel) const {
        return wheel < 2 ? parameters_.front : parameters_.rear;
    }

    CarParameters parameters_;
    State state_;
};

} // namespace cosim_host
