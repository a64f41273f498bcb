#include "programs/cosim_host/car_model.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace cosim_host {

CarModel::CarModel(const std::array<TyreExchange, wheelCount>& tyres,
                   const CarParameters& parameters, Tracks tracks, double speed)
    : tyres_(tyres),
      parameters_(parameters),
      tracks_(std::move(tracks)),
      speed_(speed),
      car_(parameters) {}

PerWheel CarModel::forces() const {
    PerWheel forces{};
    for (std::size_t i = 0; i < wheelCount; ++i) {
        forces[i] = tyres_[i].verticalForce();
    }
    return forces;
}

double CarModel::distance(std::size_t wheel, double time) const {
    return speed_ * time + (car_.forward(wheel) - car_.forward(0));
}

const Road& CarModel::road(std::size_t wheel) const {
    return wheel % 2 == 0 ? tracks_.left : tracks_.right;
}

void CarModel::impose(double time) {
    const PerWheel loads = car_.loadsAtRest();
    for (std::size_t i = 0; i < wheelCount; ++i) {
        const double restingDeflection = loads[i] / parameters_.tyreStiffness;
        HubMotion hub;
        hub.distance = distance(i, time);
        hub.left = car_.left(i);
        hub.height = parameters_.tyreRadius - restingDeflection + car_.hub(i);
        hub.speed = speed_;
        hub.verticalVelocity = car_.hubVelocity(i);
        hub.spin = speed_ / (parameters_.tyreRadius - restingDeflection / 3.0); // rolling freely
        hub.roadHeight = road(i).height(hub.distance);
        hub.roadHeightRate = speed_ * road(i).slope(hub.distance);
        tyres_[i].impose(hub);
    }
    forcesAtBegin_ = forces();
}

void CarModel::advance(double from, double to) {
    PerWheel held = forces();
    for (std::size_t i = 0; i < wheelCount; ++i) {
        held[i] = (forcesAtBegin_[i] + held[i]) / 2.0;
        roadHeights_[i] = road(i).height(distance(i, to));
    }
    car_.advance(held, to - from);
}

std::string CarModel::warningAbout(double stepSize) const {
    return settlingWarning(stepSize, [this](double step) { return stepMatrix(step); });
}

/// States are those of the car and, for each tyre, the deflection that its last force stands for. The
/// tyres let the hubs move on with their velocities over the step.
StepMatrix CarModel::stepMatrix(double stepSize) const {
    constexpr std::size_t size = Car::stateCount + wheelCount;
    StepMatrix matrix(size, std::vector<double>(size));
    for (std::size_t j = 0; j < size; ++j) {
        std::array<double, size> begin{};
        begin[j] = 1.0;
        Car::State state{};
        std::copy_n(begin.begin(), Car::stateCount, state.begin());
        Car car(parameters_, state);
        PerWheel deflections{};
        PerWheel forces = car.loadsAtRest();
        const double delay = stepSize + parameters_.tyreDamping / parameters_.tyreStiffness;
        for (std::size_t i = 0; i < wheelCount; ++i) {
            deflections[i] = -car.hub(i) - delay * car.hubVelocity(i);
            forces[i] +=
                parameters_.tyreStiffness * (begin[Car::stateCount + i] + deflections[i]) / 2.0;
        }
        car.advance(forces, stepSize);
        for (std::size_t i = 0; i < size; ++i) {
            matrix[i][j] = i < Car::stateCount ? car.state()[i] : deflections[i - Car::stateCount];
        }
    }
    return matrix;
}

std::vector<Signal> CarModel::signals() const {
    std::vector<Signal> signals = {{"body.height", "m", [this] { return car_.heave(); }},
                                   {"body.roll", "rad", [this] { return car_.roll(); }},
                                   {"body.pitch", "rad", [this] { return car_.pitch(); }}};
    for (std::size_t i = 0; i < wheelCount; ++i) {
        const std::string wheel = std::string(wheelNames[i]) + ".";
        for (Signal signal : tyres_[i].signals()) {
            signal.name.insert(0, wheel);
            signals.push_back(std::move(signal));
        }
        signals.push_back({wheel + "hub.height", "m", [this, i] { return car_.hub(i); }});
        signals.push_back({wheel + "road.height", "m", [this, i] { return roadHeights_[i]; }});
    }
    return signals;
}

} // namespace cosim_host
