// The tyre as a slave: its physics is in tyre_model.h, its variables are those of tyre.xml.
#include "example_fmus/slave/internal_steps.h"
#include "example_fmus/slave/model_slave.h"
#include "example_fmus/slave/parameter_rules.h"
#include "example_fmus/tyre/tyre_model.h"

#include <array>
#include <cmath>
#include <memory>

namespace {

/** Value references of the Reals; the parameters follow in the order of `rules`. */
enum RealReference : std::size_t {
    hubPosition = 0,
    hubOrientation = 3,
    hubVelocity = 6,
    hubAngularVelocity = 9,
    roadHeight = 12,
    roadHeightRate = 13,
    roadNormal = 14,
    friction = 17,
    inputCount = 18,
    force = 18,
    moment = 21,
    contact = 24,
    firstParameter = 30
};

constexpr std::array<const char*, inputCount> inputNames = {"hubPosition[1]",
                                                            "hubPosition[2]",
                                                            "hubPosition[3]",
                                                            "hubOrientation[1]",
                                                            "hubOrientation[2]",
                                                            "hubOrientation[3]",
                                                            "hubVelocity[1]",
                                                            "hubVelocity[2]",
                                                            "hubVelocity[3]",
                                                            "hubAngularVelocity[1]",
                                                            "hubAngularVelocity[2]",
                                                            "hubAngularVelocity[3]",
                                                            "roadHeight",
                                                            "roadHeightRate",
                                                            "roadNormal[1]",
                                                            "roadNormal[2]",
                                                            "roadNormal[3]",
                                                            "friction"};

using Rule = ParameterRule<TyreParameters>;

constexpr std::array<Rule, 12> rules = {{
    {"radius", "m", &TyreParameters::radius},
    {"verticalStiffness", "N/m", &TyreParameters::verticalStiffness},
    {"verticalDamping", "N.s/m", &TyreParameters::verticalDamping, true},
    {"longitudinalStiffness", "N", &TyreParameters::longitudinalStiffness},
    {"corneringStiffness", "N/rad", &TyreParameters::corneringStiffness},
    {"longitudinalRelaxationLength", "m", &TyreParameters::longitudinalRelaxationLength},
    {"lateralRelaxationLength", "m", &TyreParameters::lateralRelaxationLength},
    {"carcassDamping", "N.s/m", &TyreParameters::carcassDamping, true},
    {"lateralFrictionRatio", "1", &TyreParameters::lateralFrictionRatio},
    {"pneumaticTrail", "m", &TyreParameters::pneumaticTrail, true},
    {"rollingResistance", "1", &TyreParameters::rollingResistance, true},
    {"internalStep", "s", &TyreParameters::internalStep},
}};

constexpr std::size_t realCount = firstParameter + rules.size();

/** A static wheel load of 4000 N. */
constexpr double startDeflection = 0.02;

/** Tells a tool that looks for this kind of tyre that it has found one. */
constexpr int identification = 58213407;

class Tyre final : public ModelSlave<TyreModel> {
  public:
    explicit Tyre(const Instantiation& instantiation)
        : ModelSlave(instantiation, {realCount, 1, 0, 0}, TyreModel({})) {
        useStartValues();
    }

    fmi2Status doStep(const CommunicationStep& step) override;

  private:
    void useStartValues() override;
    fmi2Status useParameters() override;

    void updateOutputs() override { publish(remembered.model.outputs(inputs())); }

    fmi2Status checkInputs(double step) const;
    Vector3 vectorAt(std::size_t reference) const;
    void setVector(std::size_t reference, const Vector3& vector);
    TyreInputs inputs() const;
    void publish(const TyreOutputs& outputs);
};

void Tyre::useStartValues() {
    const TyreParameters parameters;
    for (std::size_t i = 0; i < rules.size(); ++i) {
        reals[firstParameter + i] = parameters.*rules[i].member;
    }
    for (std::size_t i = 0; i < firstParameter; ++i) {
        reals[i] = 0.0;
    }
    setVector(hubPosition, {0.0, 0.0, parameters.radius - startDeflection});
    setVector(roadNormal, {0.0, 0.0, 1.0});
    reals[friction] = 1.0;
    integers[0] = identification;
    remembered = {TyreModel(parameters)};
}

fmi2Status Tyre::useParameters() {
    TyreParameters parameters;
    for (std::size_t i = 0; i < rules.size(); ++i) {
        parameters.*rules[i].member = reals[firstParameter + i];
    }
    remembered.model = TyreModel(parameters);
    return checkParameters<TyreParameters>(*this, parameters, rules);
}

fmi2Status Tyre::doStep(const CommunicationStep& communicationStep) {
    const double step = communicationStep.size;
    const fmi2Status status = checkInputs(step);
    if (status == fmi2OK) {
        const TyreInputs given = inputs();
        remembered.model.advance(given, step);
        publish(remembered.model.outputs(given, step));
        remembered.lastStep = step;
    }
    return status;
}

fmi2Status Tyre::checkInputs(double step) const {
    for (std::size_t i = 0; i < inputCount; ++i) {
        if (!std::isfinite(reals[i])) {
            log(fmi2Error, std::string("Input '") + inputNames[i] + "' is " + shortText(reals[i]) +
                               "; it must be a finite number.");
            return fmi2Error;
        }
    }
    if (reals[roadNormal + 2] <= 0.0 || reals[friction] < 0.0) {
        log(fmi2Error, "Input 'roadNormal[3]' is " + shortText(reals[roadNormal + 2]) +
                           " and 'friction' is " + shortText(reals[friction]) +
                           "; the road must face upwards (roadNormal[3] > 0) and friction must be "
                           "at least 0.");
        return fmi2Error;
    }
    if (!(step > 0.0 && step <= longestCommunicationStep)) {
        log(fmi2Error, "The communication step is " + shortText(step) +
                           " s; it must be greater than 0 and at most 1000 s.");
        return fmi2Error;
    }
    return fmi2OK;
}

Vector3 Tyre::vectorAt(std::size_t reference) const {
    return {reals[reference], reals[reference + 1], reals[reference + 2]};
}

void Tyre::setVector(std::size_t reference, const Vector3& vector) {
    reals[reference] = vector.x;
    reals[reference + 1] = vector.y;
    reals[reference + 2] = vector.z;
}

TyreInputs Tyre::inputs() const {
    return {vectorAt(hubPosition),        vectorAt(hubOrientation), vectorAt(hubVelocity),
            vectorAt(hubAngularVelocity), reals[roadHeight],        reals[roadHeightRate],
            vectorAt(roadNormal),         reals[friction]};
}

void Tyre::publish(const TyreOutputs& outputs) {
    setVector(force, outputs.force);
    setVector(moment, outputs.moment);
    const std::array<double, 6> quantities = {outputs.deflection,  outputs.loadedRadius,
                                              outputs.normalForce, outputs.longitudinalSlip,
                                              outputs.lateralSlip, outputs.frictionUse};
    for (std::size_t i = 0; i < quantities.size(); ++i) {
        reals[contact + i] = quantities[i];
    }
}

} // namespace

std::unique_ptr<Slave> makeSlave(const Instantiation& instantiation) {
    if (!guidMatches(instantiation, FMU_GUID)) {
        return nullptr;
    }
    return std::make_unique<Tyre>(instantiation);
}
