// The physical FMUs against what can be computed by hand, through the runtime.
#include "fmu_runtime/loaded_fmu.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <string>

namespace {

using namespace test_support;
using testing::Contains;
using testing::HasSubstr;

constexpr double step = 1e-3;

void set(FmiToolsInstance* fmu, const std::string& name, double value) {
    ASSERT_EQ(fmiToolsSetRealVariableValue(fmu, name.c_str(), value), 0) << name;
}

void simulateTo(FmiToolsInstance* fmu, double time) {
    ASSERT_EQ(fmiToolsSimulateToT(fmu, time), 0);
}

/// Lets the tyre roll at 20 m/s under 4000 N until its forces have settled.
void roll(FmiToolsInstance* fmu, double slip, double lateralSlip, double friction) {
    constexpr double rollingRadius = 0.32 - 0.02 / 3.0;
    set(fmu, "hubVelocity[1]", 20.0);
    set(fmu, "hubVelocity[2]", 20.0 * lateralSlip);
    set(fmu, "hubAngularVelocity[2]", 20.0 * (1.0 + slip) / rollingRadius);
    set(fmu, "friction", friction);
    simulateTo(fmu, 2.0);
}

TEST(Tyre, StandsOnItsVerticalStiffness) {
    for (const double deflection : {0.0, 0.01, 0.035}) {
        LoadedFmu tyre("tyre");
        set(tyre, "hubPosition[3]", 0.4 + 0.32 - deflection);
        set(tyre, "roadHeight", 0.4);
        ASSERT_EQ(fmiToolsInitialize(tyre), 0);
        EXPECT_NEAR(tyre.real("force[3]"), 200000.0 * deflection, 1e-6) << "before the first step";
        simulateTo(tyre, 0.5);
        EXPECT_NEAR(tyre.real("force[3]"), 200000.0 * deflection, 1e-6);
        EXPECT_NEAR(tyre.real("contact.deflection"), deflection, 1e-12);
        EXPECT_EQ(tyre.real("force[1]"), 0.0);
        EXPECT_EQ(tyre.real("moment[1]"), 0.0);
    }
}

TEST(Tyre, TurnsSlipIntoForceUpToTheFrictionLimit) {
    constexpr std::array<std::array<double, 3>, 6> cases = {{{0.0, 0.0, 1.0},
                                                             {0.01, 0.0, 1.0},
                                                             {0.0, -0.05, 0.7},
                                                             {-0.1, 0.08, 1.0},
                                                             {-1.0, 0.0, 0.3},
                                                             {0.0, 0.5, 0.0}}};
    for (const auto& [slip, lateralSlip, friction] : cases) {
        LoadedFmu tyre("tyre");
        ASSERT_EQ(fmiToolsInitialize(tyre), 0);
        roll(tyre, slip, lateralSlip, friction);
        const double limit = friction * 4000.0;
        const double used = limit == 0.0 ? std::numeric_limits<double>::infinity()
                                         : std::hypot(80000.0 * slip / limit,
                                                      60000.0 * lateralSlip / (0.95 * limit));
        EXPECT_NEAR(tyre.real("force[1]"), 80000.0 * slip / (1.0 + used), 0.01);
        EXPECT_NEAR(tyre.real("force[2]"), -60000.0 * lateralSlip / (1.0 + used), 0.01);
        EXPECT_NEAR(tyre.real("contact.longitudinalSlip"), slip, 1e-9);
        EXPECT_NEAR(tyre.real("contact.lateralSlip"), lateralSlip, 1e-9);
    }
}

TEST(Tyre, NeverPullsAtTheRoadNorExceedsFrictionWhenItHops) {
    LoadedFmu tyre("tyre");
    ASSERT_EQ(fmiToolsInitialize(tyre), 0);
    set(tyre, "hubVelocity[1]", 20.0);
    set(tyre, "hubVelocity[2]", 3.0);
    for (int n = 1; n <= 500; ++n) {
        const double time = n * step;
        set(tyre, "hubPosition[3]", 0.31 + 0.02 * std::sin(60.0 * time));
        set(tyre, "hubVelocity[3]", 1.2 * std::cos(60.0 * time));
        set(tyre, "hubAngularVelocity[2]", 64.0 + 30.0 * std::sin(25.0 * time));
        simulateTo(tyre, time);
        const double load = tyre.real("force[3]");
        ASSERT_GE(load, 0.0);
        ASSERT_LE(std::hypot(tyre.real("force[1]"), tyre.real("force[2]") / 0.95),
                  load * (1.0 + 1e-9));
    }
}

/// How much damping [N.s/m] a mass of 40 kg on the tyre feels that has none of its own, when the
/// vehicle holds this share of the force at the end of a step and the rest of that at its begin.
double dampingOfCoupling(double shareOfEnd) {
    constexpr double mass = 40.0;
    constexpr int steps = 1000;
    LoadedFmu tyre("tyre");
    set(tyre, "verticalDamping", 0.0);
    EXPECT_EQ(fmiToolsInitialize(tyre), 0);
    const auto energy = [](double height, double velocity) {
        return 200000.0 * height * height / 2.0 + mass * velocity * velocity / 2.0;
    };
    double height = 0.001; // above where the mass rests
    double velocity = 0.0;
    double begin = 4000.0 - 200000.0 * height;
    for (int n = 1; n <= steps; ++n) {
        set(tyre, "hubPosition[3]", 0.3 + height);
        set(tyre, "hubVelocity[3]", velocity);
        simulateTo(tyre, n * step);
        const double end = tyre.real("force[3]");
        const double held = shareOfEnd * end + (1.0 - shareOfEnd) * begin - 4000.0;
        height += step * velocity + step * step * held / mass / 2.0;
        velocity += step * held / mass;
        begin = end;
    }
    return mass / (steps * step) * std::log(energy(0.001, 0.0) / energy(height, velocity));
}

TEST(Tyre, AddsDampingToAVehicleThatHoldsTheForceOfTheEnd) {
    EXPECT_NEAR(dampingOfCoupling(1.0), 200000.0 * step / 2.0, 10.0);
    EXPECT_NEAR(dampingOfCoupling(0.5), 0.0, 5.0);
}

TEST(PhysicalFmus, RefuseParametersThatMakeNoSense) {
    struct Case {
        const char *fmu, *parameter, *value, *message;
    };

    for (const auto& [name, parameter, value, message] :
         {Case{"tyre", "radius", "-0.3",
               "Parameter 'radius' is -0.3 m; it must be greater than 0."},
          Case{"tyre", "verticalDamping", "-1",
               "Parameter 'verticalDamping' is -1 N.s/m; it must be at least 0."},
          Case{"shock_absorber", "oilStiffness", "0",
               "Parameter 'oilStiffness' is 0 N/m; it must be greater than 0."}}) {
        LoadedFmu fmu(name);
        fmiToolsSetVariableValue(fmu, parameter, value);
        EXPECT_NE(fmiToolsInitialize(fmu), 0);
        EXPECT_THAT(fmu.log(), Contains(HasSubstr(message)));
    }
}

TEST(PhysicalFmus, RefuseInputsThatAreNoNumbers) {
    LoadedFmu tyre("tyre");
    ASSERT_EQ(fmiToolsInitialize(tyre), 0);
    set(tyre, "hubVelocity[3]", std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(fmiToolsSimulateToT(tyre, step), -201);
    EXPECT_THAT(tyre.log(),
                Contains(HasSubstr("Input 'hubVelocity[3]' is nan; it must be a finite number.")));
}

TEST(ShockAbsorber, SettlesAtItsDampingCurve) {
    LoadedFmu shockAbsorber("shock_absorber");
    ASSERT_EQ(fmiToolsInitialize(shockAbsorber), 0);
    double time = 0.0;
    for (const double velocity : {0.5, -0.5}) {
        const double damping = velocity > 0.0 ? 3000.0 : 1500.0;
        set(shockAbsorber, "velocity", velocity);
        simulateTo(shockAbsorber, time += 1.0);
        const double oil = 750.0 * (std::sqrt(1.0 + 4.0 * damping * 0.5 / 1500.0) - 1.0);
        const double gas = -150.0 + 1000.0 * velocity;
        EXPECT_NEAR(shockAbsorber.real("force"), std::copysign(oil + 30.0, velocity) + gas, 0.1);
    }
}

TEST(ShockAbsorber, TakesEnergyOutAndLagsBehindQuickMotion) {
    LoadedFmu shockAbsorber("shock_absorber");
    ASSERT_EQ(fmiToolsInitialize(shockAbsorber), 0);
    const double omega = 2.0 * std::numbers::pi * 20.0;
    double work = 0.0;
    double forceAtTurn = 0.0;
    for (int n = 1; n <= 50; ++n) { // one period
        const double middle = (n - 0.5) * step;
        set(shockAbsorber, "displacement", 0.005 * std::sin(omega * (n - 1) * step));
        const double velocity = 0.005 * omega * std::cos(omega * middle);
        set(shockAbsorber, "velocity", velocity);
        simulateTo(shockAbsorber, n * step);
        work += shockAbsorber.real("force") * velocity * step;
        forceAtTurn = n == 12 ? shockAbsorber.real("oilForce") : forceAtTurn;
    }
    EXPECT_GT(work, 5.0);
    EXPECT_GT(forceAtTurn, 50.0) << "the oil is still under pressure where the motion turns";
}

TEST(PhysicalFmus, RepeatTheirResultsToTheLastBit) {
    std::string before;
    for (int run = 0; run < 2; ++run) {
        LoadedFmu tyre("tyre");
        ASSERT_EQ(fmiToolsInitialize(tyre), 0);
        roll(tyre, 0.07, 0.03, 0.9);
        const std::string results = readFile(tyre.resultsFile());
        EXPECT_TRUE(run == 0 || results == before);
        before = results;
    }
    EXPECT_THAT(before, HasSubstr("2.0000000000000000e+00,"));
}

} // namespace
