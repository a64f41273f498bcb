#include "example_fmus/tyre/tyre_model.h"

#include "example_fmus/slave/internal_steps.h"

#include <algorithm>
#include <cmath>

namespace {

/** Below this rolling speed slip is reckoned against it instead of against the speed [m/s]. */
constexpr double slowestSlipSpeed = 0.1;

/** Deflection over which the damping builds up at touch-down [m]. */
constexpr double dampingDepth = 0.002;

Vector3 spinAxis(const Vector3& orientation) {
    const double roll = orientation.x;
    const double pitch = orientation.y;
    const double yaw = orientation.z;
    return {std::cos(yaw) * std::sin(pitch) * std::sin(roll) - std::sin(yaw) * std::cos(roll),
            std::sin(yaw) * std::sin(pitch) * std::sin(roll) + std::cos(yaw) * std::cos(roll),
            std::cos(pitch) * std::sin(roll)};
}

/** From -1 to 1. Like the rest it takes square roots where a library's transcendental function
 * would do, because these come out the same on every platform. */
double smoothSign(double ratio) {
    return ratio / std::sqrt(1.0 + ratio * ratio);
}

double smoothStep(double ratio) {
    const double s = std::clamp(ratio, 0.0, 1.0);
    return s * s * (3.0 - 2.0 * s);
}

} // namespace

/** The wheel's place and motion relative to the road. */
struct TyreModel::Contact {
    Vector3 axis;         // of the spin
    Vector3 forward;      // in the road plane and the wheel plane
    Vector3 left;         // in the road plane
    Vector3 normal;       // of the road
    Vector3 centre;       // of the contact patch, from the hub
    double deflection;    // positive when pressed
    double loadedRadius;  // from the hub to the road, in the wheel plane
    double normalForce;   // never negative
    double rollingSpeed;  // forward, of the hub
    Horizontal slipSpeed; // of the tread against the road
    Horizontal limit;     // of the friction force
};

TyreModel::Contact TyreModel::contactAt(const TyreInputs& inputs, double elapsed) const {
    Contact contact{};
    contact.axis = spinAxis(inputs.hubOrientation);
    contact.normal = normalised(inputs.roadNormal);
    contact.forward = normalised(cross(contact.axis, contact.normal));
    contact.left = cross(contact.normal, contact.forward);
    const Vector3 up = cross(contact.forward, contact.axis);
    const double camberCosine = dot(up, contact.normal);

    const double clearance = inputs.hubPosition.z + elapsed * inputs.hubVelocity.z -
                             (inputs.roadHeight + elapsed * inputs.roadHeightRate);
    contact.loadedRadius = clearance * contact.normal.z / camberCosine;
    contact.deflection = parameters_.radius - contact.loadedRadius;
    contact.centre = -contact.loadedRadius * up;

    const double approach = contact.normal.z * (inputs.roadHeightRate - inputs.hubVelocity.z);
    contact.normalForce = normalForce(contact.deflection * camberCosine, approach);

    const double rollingRadius = parameters_.radius - std::max(contact.deflection, 0.0) / 3.0;
    const Vector3 treadVelocity =
        inputs.hubVelocity + cross(inputs.hubAngularVelocity, -rollingRadius * up);
    contact.slipSpeed = {dot(treadVelocity, contact.forward), dot(treadVelocity, contact.left)};
    contact.rollingSpeed = dot(inputs.hubVelocity, contact.forward);
    contact.limit.x = inputs.friction * contact.normalForce;
    contact.limit.y = parameters_.lateralFrictionRatio * contact.limit.x;
    return contact;
}

double TyreModel::normalForce(double deflection, double deflectionRate) const {
    if (deflection <= 0.0) {
        return 0.0;
    }
    const double damping = parameters_.verticalDamping * smoothStep(deflection / dampingDepth);
    return std::max(0.0, parameters_.verticalStiffness * deflection + damping * deflectionRate);
}

TyreModel::Horizontal TyreModel::stiffness() const {
    return {parameters_.longitudinalStiffness / parameters_.longitudinalRelaxationLength,
            parameters_.corneringStiffness / parameters_.lateralRelaxationLength};
}

/** How much of the friction limit a force takes: the ellipse is where this is 1. */
double TyreModel::share(const Horizontal& force, const Contact& contact) const {
    const double x = force.x / contact.limit.x;
    const double y = force.y / contact.limit.y;
    return std::sqrt(x * x + y * y);
}

/** How fast a carcass deflection fades: by fresh tread rolling in, and by sliding. */
TyreModel::Horizontal TyreModel::relaxationRates(const Contact& contact) const {
    const double sliding = share({parameters_.longitudinalStiffness * contact.slipSpeed.x,
                                  parameters_.corneringStiffness * contact.slipSpeed.y},
                                 contact);
    const double speed = std::abs(contact.rollingSpeed) + sliding;
    return {speed / parameters_.longitudinalRelaxationLength,
            speed / parameters_.lateralRelaxationLength};
}

TyreModel::Horizontal TyreModel::carcassForce(const Contact& contact) const {
    if (contact.limit.x <= 0.0) {
        return {};
    }
    const Horizontal k = stiffness();
    const Horizontal fading = relaxationRates(contact);
    const double d = parameters_.carcassDamping;
    const Horizontal force = {k.x * carcass_.x - d * (contact.slipSpeed.x + fading.x * carcass_.x),
                              k.y * carcass_.y - d * (contact.slipSpeed.y + fading.y * carcass_.y)};
    const double excess = std::max(1.0, share(force, contact));
    return {force.x / excess, force.y / excess};
}

void TyreModel::advance(const TyreInputs& inputs, double step) {
    const int steps = internalSteps(step, parameters_.internalStep);
    const double internalStep = step / steps;
    for (int n = 1; n <= steps; ++n) {
        relax(contactAt(inputs, n * internalStep), internalStep);
    }
}

/** Backward Euler, which stays stable however fast the tread slides. */
void TyreModel::relax(const Contact& contact, double step) {
    if (contact.limit.x <= 0.0) {
        carcass_ = {};
        return;
    }
    const Horizontal fading = relaxationRates(contact);
    carcass_.x = (carcass_.x - step * contact.slipSpeed.x) / (1.0 + step * fading.x);
    carcass_.y = (carcass_.y - step * contact.slipSpeed.y) / (1.0 + step * fading.y);
    slide(contact);
}

/** Lets the tread slide when the wheel load has fallen below what the carcass's force needs. */
void TyreModel::slide(const Contact& contact) {
    const Horizontal k = stiffness();
    const double excess = std::max(1.0, share({k.x * carcass_.x, k.y * carcass_.y}, contact));
    carcass_ = {carcass_.x / excess, carcass_.y / excess};
}

TyreOutputs TyreModel::outputs(const TyreInputs& inputs, double elapsed) const {
    const Contact contact = contactAt(inputs, elapsed);
    const Horizontal force = carcassForce(contact);
    const double slipReference = std::max(std::abs(contact.rollingSpeed), slowestSlipSpeed);
    const double direction = smoothSign(contact.rollingSpeed / slowestSlipSpeed);

    TyreOutputs result;
    result.deflection = contact.deflection;
    result.loadedRadius = contact.loadedRadius;
    result.normalForce = contact.normalForce;
    result.longitudinalSlip = -contact.slipSpeed.x / slipReference;
    result.lateralSlip = contact.slipSpeed.y / slipReference;
    result.frictionUse = contact.limit.x > 0.0 ? share(force, contact) : 0.0;
    result.force =
        force.x * contact.forward + force.y * contact.left + contact.normalForce * contact.normal;
    const double aligning =
        -direction * parameters_.pneumaticTrail * (1.0 - result.frictionUse) * force.y;
    const double rolling =
        -direction * parameters_.rollingResistance * contact.normalForce * parameters_.radius;
    result.moment =
        cross(contact.centre, result.force) + aligning * contact.normal + rolling * contact.axis;
    return result;
}
