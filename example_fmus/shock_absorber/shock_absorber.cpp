// A hydraulic shock absorber with hysteresis.
//
// The oil flows through valves and is compressible: valves and oil act in series (a Maxwell element
// with a degressive damper). With F the force of the oil and v the velocity,
//
//     dF/dt = oilStiffness * (v - g(F)),    g(F) = F / c * (1 + |F| / kneeForce),
//
// where c is reboundDamping for F > 0 and compressionDamping otherwise. At constant velocity v the
// force settles at kneeForce / 2 * (sqrt(1 + 4 * c * |v| / kneeForce) - 1); in a quick motion it
// lags behind, which opens the force-velocity curve to a loop. Seal friction and the gas add
//
//     sealFriction * v / sqrt(v^2 + (1 cm/s)^2) - gasForce + gasStiffness * displacement.
//
// Displacement, velocity and force are positive in rebound (extension); the force resists. Within a
// communication step the velocity is constant and the displacement moves on with it.
#include "example_fmus/slave/internal_steps.h"
#include "example_fmus/slave/model_slave.h"
#include "example_fmus/slave/parameter_rules.h"

#include <array>
#include <cmath>
#include <memory>

namespace {

struct ShockAbsorberParameters {
    double reboundDamping = 3000.0;     // [N.s/m]
    double compressionDamping = 1500.0; // [N.s/m]
    double kneeForce = 1500.0;          // [N]
    double oilStiffness = 1.5e6;        // [N/m]
    double sealFriction = 30.0;         // [N]
    double gasForce = 150.0;            // at displacement 0 [N]
    double gasStiffness = 1000.0;       // [N/m]
    double internalStep = 1e-4;         // longest step of the integration [s]
};

/** Value references of the Reals; the parameters follow in the order of `rules`. */
enum RealReference : std::size_t { displacement, velocity, force, oilForce, firstParameter };

using Rule = ParameterRule<ShockAbsorberParameters>;

constexpr std::array<Rule, 8> rules = {{
    {"reboundDamping", "N.s/m", &ShockAbsorberParameters::reboundDamping},
    {"compressionDamping", "N.s/m", &ShockAbsorberParameters::compressionDamping},
    {"kneeForce", "N", &ShockAbsorberParameters::kneeForce},
    {"oilStiffness", "N/m", &ShockAbsorberParameters::oilStiffness},
    {"sealFriction", "N", &ShockAbsorberParameters::sealFriction, true},
    {"gasForce", "N", &ShockAbsorberParameters::gasForce, true},
    {"gasStiffness", "N/m", &ShockAbsorberParameters::gasStiffness, true},
    {"internalStep", "s", &ShockAbsorberParameters::internalStep},
}};

/** The velocity at which the seal friction has built up [m/s]. */
constexpr double frictionVelocity = 0.01;

class ShockAbsorber final : public ModelSlave<ShockAbsorberParameters> {
  public:
    explicit ShockAbsorber(const Instantiation& instantiation)
        : ModelSlave(instantiation, {firstParameter + rules.size(), 0, 0, 0}, {}) {
        useStartValues();
    }

    fmi2Status doStep(const CommunicationStep& step) override;

  private:
    void useStartValues() override;
    fmi2Status useParameters() override;

    void updateOutputs() override { updateForce(0.0); }

    void advanceOil(double step);
    void updateForce(double elapsed);
};

void ShockAbsorber::useStartValues() {
    remembered = {};
    for (std::size_t i = 0; i < rules.size(); ++i) {
        reals[firstParameter + i] = remembered.model.*rules[i].member;
    }
    for (std::size_t i = 0; i < firstParameter; ++i) {
        reals[i] = 0.0;
    }
}

fmi2Status ShockAbsorber::useParameters() {
    for (std::size_t i = 0; i < rules.size(); ++i) {
        remembered.model.*rules[i].member = reals[firstParameter + i];
    }
    return checkParameters<ShockAbsorberParameters>(*this, remembered.model, rules);
}

fmi2Status ShockAbsorber::doStep(const CommunicationStep& communicationStep) {
    const double step = communicationStep.size;
    const bool inputsAreFinite =
        std::isfinite(reals[displacement]) && std::isfinite(reals[velocity]);
    if (!inputsAreFinite || !(step > 0.0 && step <= longestCommunicationStep)) {
        log(fmi2Error,
            "displacement is " + shortText(reals[displacement]) + " m, velocity " +
                shortText(reals[velocity]) + " m/s, the communication step " + shortText(step) +
                " s; all must be finite and the step greater than 0 and at most 1000 s.");
        return fmi2Error;
    }
    const int steps = internalSteps(step, remembered.model.internalStep);
    for (int n = 0; n < steps; ++n) {
        advanceOil(step / steps);
    }
    updateForce(step);
    remembered.lastStep = step;
    return fmi2OK;
}

/** Backward Euler, stable for any oil stiffness; g(F) is a parabola on either side of 0, so the new
 *  force is the root of a quadratic equation. */
void ShockAbsorber::advanceOil(double step) {
    const ShockAbsorberParameters& given = remembered.model;
    const double right = reals[oilForce] + step * given.oilStiffness * reals[velocity];
    const double damping = right > 0.0 ? given.reboundDamping : given.compressionDamping;
    const double linear = step * given.oilStiffness / damping;
    const double quadratic = linear / given.kneeForce;
    const double root =
        std::sqrt((1.0 + linear) * (1.0 + linear) + 4.0 * quadratic * std::abs(right));
    reals[oilForce] = 2.0 * right / (1.0 + linear + root);
}

void ShockAbsorber::updateForce(double elapsed) {
    const ShockAbsorberParameters& given = remembered.model;
    const double v = reals[velocity];
    const double friction = v / std::sqrt(v * v + frictionVelocity * frictionVelocity);
    const double position = reals[displacement] + elapsed * reals[velocity];
    reals[force] = reals[oilForce] + given.sealFriction * friction - given.gasForce +
                   given.gasStiffness * position;
}

} // namespace

std::unique_ptr<Slave> makeSlave(const Instantiation& instantiation) {
    if (!guidMatches(instantiation, FMU_GUID)) {
        return nullptr;
    }
    return std::make_unique<ShockAbsorber>(instantiation);
}
