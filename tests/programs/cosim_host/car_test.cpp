// The equations of the whole car against what can be known without them.
#include "programs/cosim_host/car.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace {

using namespace cosim_host;

/// A car whose every value differs from every other one.
CarParameters oddCar() {
    CarParameters parameters;
    parameters.bodyMass = 1350.0;
    parameters.front = {1.15, 1.52, 41.0, 27000.0, 1900.0};
    parameters.rear = {1.42, 1.47, 37.0, 23000.0, 1600.0};
    return parameters;
}

/// Forces of tyres on an even road that are springs of those stiffnesses; with dampers where `damping`
/// (N.s/m) says so.
PerWheel springForces(const Car& car, const PerWheel& stiffness, double damping) {
    PerWheel forces{};
    for (std::size_t i = 0; i < wheelCount; ++i) {
        const double restingDeflection = car.loadsAtRest()[i] / 200000.0;
        forces[i] = stiffness[i] * (restingDeflection - car.hub(i)) - damping * car.hubVelocity(i);
    }
    return forces;
}

/// Solves a * x = b by Gauss's elimination.
template <std::size_t N>
std::array<double, N> solved(std::array<std::array<double, N>, N> a, std::array<double, N> b) {
    for (std::size_t k = 0; k < N; ++k) {
        std::size_t pivot = k;
        for (std::size_t i = k; i < N; ++i) {
            pivot = std::abs(a[i][k]) > std::abs(a[pivot][k]) ? i : pivot;
        }
        std::swap(a[k], a[pivot]);
        std::swap(b[k], b[pivot]);
        for (std::size_t i = k + 1; i < N; ++i) {
            const double factor = a[i][k] / a[k][k];
            for (std::size_t j = k; j < N; ++j) {
                a[i][j] -= factor * a[k][j];
            }
            b[i] -= factor * b[k];
        }
    }
    for (std::size_t k = N; k-- > 0;) {
        for (std::size_t j = k + 1; j < N; ++j) {
            b[k] -= a[k][j] * b[j];
        }
        b[k] /= a[k][k];
    }
    return b;
}

/// The wheel loads of the odd car on tyres of those stiffnesses: suspension and tyre are springs in
/// series, whose forces carry the body's weight without a moment. The body's heave, roll and pitch are
/// counted from where all springs are free of load, and the springs were set up for the loads at rest.
PerWheel loadsByStatics(const PerWheel& stiffness) {
    const CarParameters car = oddCar();
    const double g = 9.81;
    const double wheelbase = car.front.distance + car.rear.distance;
    std::array<std::array<double, 3>, 3> a{};
    std::array<double, 3> b{};
    PerWheel series{};
    PerWheel offset{};
    std::array<std::array<double, 3>, wheelCount> arms{};
    for (std::size_t i = 0; i < wheelCount; ++i) {
        const bool isFront = i < 2;
        const AxleParameters& axle = isFront ? car.front : car.rear;
        arms[i] = {1.0, (i % 2 == 0 ? 0.5 : -0.5) * axle.track,
                   isFront ? -axle.distance : axle.distance};
        const double share = (isFront ? car.rear.distance : car.front.distance) / wheelbase / 2.0;
        const double bodyLoad = car.bodyMass * g * share;
        const double wheelLoad = bodyLoad + axle.wheelMass * g;
        series[i] = 1.0 / (1.0 / axle.springStiffness + 1.0 / stiffness[i]);
        // Heights over the loaded rest: w = load / 200000 - tyre force / stiffness, and
        // body force = bodyLoad + springStiffness * (w - c), tyre force = body force + weight of wheel.
        offset[i] = wheelLoad / 200000.0 - axle.wheelMass * g / stiffness[i] +
                    bodyLoad / axle.springStiffness;
        for (std::size_t j = 0; j < 3; ++j) {
            for (std::size_t k = 0; k < 3; ++k) {
                a[j][k] += series[i] * arms[i][j] * arms[i][k];
            }
            b[j] += series[i] * arms[i][j] * offset[i];
        }
    }
    b[0] -= car.bodyMass * g;
    const std::array<double, 3> body = solved(a, b);
    PerWheel loads{};
    for (std::size_t i = 0; i < wheelCount; ++i) {
        const double height = arms[i][0] * body[0] + arms[i][1] * body[1] + arms[i][2] * body[2];
        loads[i] = series[i] * (offset[i] - height) +
                   (i < 2 ? car.front.wheelMass : car.rear.wheelMass) * g;
    }
    return loads;
}

TEST(Car, SettlesAtTheWheelLoadsOfStatics) {
    for (const PerWheel& stiffness : {PerWheel{200000.0, 200000.0, 200000.0, 200000.0},
                                      PerWheel{180000.0, 260000.0, 210000.0, 150000.0}}) {
        Car car(oddCar());
        for (int n = 0; n < 30000; ++n) {
            car.advance(springForces(car, stiffness, 2000.0), 1e-3);
        }
        const PerWheel loads = springForces(car, stiffness, 0.0);
        const PerWheel expected = loadsByStatics(stiffness);
        for (std::size_t i = 0; i < wheelCount; ++i) {
            EXPECT_NEAR(loads[i], expected[i], 1e-9 * expected[i]) << i;
        }
        EXPECT_EQ(loads[0] == loads[1], stiffness[0] == stiffness[1]);
    }
}

/// Energy in J over that at rest, and the power in W that the dampers take out.
struct Balance {
    double energy = 0.0;
    double dampedPower = 0.0;
};

double square(double value) {
    return value * value;
}

/// What gravity takes is in the springs' force at rest.
Balance balanceOf(const Car& car) {
    const CarParameters parameters = oddCar();
    const double* const moved = car.state().data();
    const double* const rates = moved + Car::degreesOfFreedom;
    Balance balance;
    balance.energy =
        (parameters.bodyMass * square(rates[0]) + parameters.rollInertia * square(rates[1]) +
         parameters.pitchInertia * square(rates[2])) /
        2.0;
    for (std::size_t i = 0; i < wheelCount; ++i) {
        const AxleParameters& axle = i < 2 ? parameters.front : parameters.rear;
        const auto nearer = [&](const double* motion) {
            return motion[Car::firstHub + i] -
                   (motion[0] - car.forward(i) * motion[2] + car.left(i) * motion[1]);
        };
        balance.energy += (axle.wheelMass * square(car.hubVelocity(i)) +
                           axle.springStiffness * square(nearer(moved))) /
                          2.0;
        balance.dampedPower += axle.damping * square(nearer(rates));
    }
    return balance;
}

TEST(Car, GainsWhatTheTyresPutInAndTheDampersLeave) {
    Car car(oddCar());
    const PerWheel rest = car.loadsAtRest();
    constexpr double step = 1e-5;
    double work = 0.0;
    double damped = 0.0;
    double largest = 0.0;
    for (int n = 0; n < 100000; ++n) {
        PerWheel forces = rest;
        for (std::size_t i = 0; i < wheelCount; ++i) {
            forces[i] += 1500.0 * std::sin((20.0 + 7.0 * static_cast<double>(i)) * n * step);
        }
        const double powerBefore = balanceOf(car).dampedPower;
        PerWheel before{};
        for (std::size_t i = 0; i < wheelCount; ++i) {
            before[i] = car.hub(i);
        }
        car.advance(forces, step);
        for (std::size_t i = 0; i < wheelCount; ++i) {
            work += (forces[i] - rest[i]) * (car.hub(i) - before[i]);
        }
        damped += step * (powerBefore + balanceOf(car).dampedPower) / 2.0;
        largest = std::max(largest, balanceOf(car).energy);
    }
    EXPECT_GT(damped, 100.0);
    EXPECT_GT(largest, 10.0);
    EXPECT_NEAR(work - damped, balanceOf(car).energy, 1e-6 * work);
}

TEST(Car, MovesMirroredToTheLastBitWhenItsSidesAreExchanged) {
    Car car(oddCar());
    Car mirrored(oddCar());
    for (int n = 0; n < 2000; ++n) {
        PerWheel forces = springForces(car, {2e5, 1.7e5, 2.3e5, 1.9e5}, 150.0);
        forces[0] += n < 100 ? 3000.0 : 0.0;
        car.advance(forces, 1e-3);
        mirrored.advance({forces[1], forces[0], forces[3], forces[2]}, 1e-3);
        ASSERT_EQ(mirrored.heave(), car.heave()) << n;
        ASSERT_EQ(mirrored.roll(), -car.roll()) << n;
        ASSERT_EQ(mirrored.pitch(), car.pitch()) << n;
        ASSERT_EQ(mirrored.hub(0), car.hub(1)) << n;
        ASSERT_EQ(mirrored.hub(3), car.hub(2)) << n;
    }
    EXPECT_NE(car.roll(), 0.0);
}

TEST(Car, RollsAndPitchesTowardsTheUnloadedSide) {
    Car car(oddCar());
    PerWheel forces = car.loadsAtRest();
    forces[0] += 1000.0; // front left is lifted
    car.advance(forces, 0.2);
    EXPECT_GT(car.heave(), 0.0);
    EXPECT_GT(car.roll(), 0.0) << "the left side rises";
    EXPECT_LT(car.pitch(), 0.0) << "the nose rises";
}

/// The heave after 0.3 s on tyres that are lifted by a ramp at front left, coupled with the forces at
/// the begin of each step.
double heaveCoupledBy(double step) {
    Car car(oddCar());
    for (int n = 0; n < std::lround(0.3 / step); ++n) {
        PerWheel forces = springForces(car, {2e5, 2e5, 2e5, 2e5}, 150.0);
        forces[0] += 200000.0 * 0.1 * n * step;
        car.advance(forces, step);
    }
    return car.heave();
}

TEST(Car, ConvergesWithTheFirstOrderOfACouplingThatHoldsForces) {
    const double exact = heaveCoupledBy(1e-5);
    const double coarse = heaveCoupledBy(2e-3) - exact;
    const double fine = heaveCoupledBy(1e-3) - exact;
    EXPECT_NEAR(coarse / fine, 2.0, 0.1);
}

} // namespace
