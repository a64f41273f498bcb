/**
 * @file tyre_model.h
 * @brief The physics of the tyre; docs/tyre_model.md derives the equations.
 *
 * All quantities are in SI units. Vectors are given in the inertial frame.
 */
#pragma once

#include "example_fmus/tyre/vector3.h"

struct TyreParameters {
    double radius = 0.32;                       ///< unloaded [m]
    double verticalStiffness = 200000.0;        ///< [N/m]
    double verticalDamping = 150.0;             ///< [N.s/m]
    double longitudinalStiffness = 80000.0;     ///< force per slip at small slip [N]
    double corneringStiffness = 60000.0;        ///< force per slip angle at small angles [N/rad]
    double longitudinalRelaxationLength = 0.25; ///< [m]
    double lateralRelaxationLength = 0.4;       ///< [m]
    double carcassDamping = 500.0;              ///< of the carcass against the contact [N.s/m]
    double lateralFrictionRatio = 0.95;         ///< lateral by longitudinal friction [1]
    double pneumaticTrail = 0.03;               ///< at small slip [m]
    double rollingResistance = 0.01;            ///< [1]
    double internalStep = 1e-4;                 ///< longest step of the integration [s]
};

/** What the vehicle and the road do to the tyre. */
struct TyreInputs {
    Vector3 hubPosition;
    Vector3 hubOrientation; ///< roll, pitch and yaw angle [rad]
    Vector3 hubVelocity;
    Vector3 hubAngularVelocity; ///< of the turning wheel, its spin included [rad/s]
    double roadHeight = 0.0;
    double roadHeightRate = 0.0;
    Vector3 roadNormal;
    double friction = 1.0;
};

/** What the tyre does to the wheel hub, and how its contact patch is doing. */
struct TyreOutputs {
    Vector3 force;
    Vector3 moment;
    double deflection = 0.0;
    double loadedRadius = 0.0;
    double normalForce = 0.0;
    double longitudinalSlip = 0.0;
    double lateralSlip = 0.0; ///< tangent of the slip angle [1]
    double frictionUse = 0.0; ///< horizontal force by the largest possible one [1]
};

/** One rolling tyre. Its states are the two horizontal deflections of the carcass. */
class TyreModel {
  public:
    explicit TyreModel(const TyreParameters& parameters) : parameters_(parameters) {}

    /** Advances by @p step seconds. The hub and the road move on with their velocities meanwhile;
     *  everything else in @p inputs stays. */
    void advance(const TyreInputs& inputs, double step);

    /** The tyre's answer @p elapsed seconds after the inputs were given. */
    TyreOutputs outputs(const TyreInputs& inputs, double elapsed = 0.0) const;

  private:
    struct Contact;

    struct Horizontal {
        double x = 0.0;
        double y = 0.0;
    };

    Contact contactAt(const TyreInputs& inputs, double elapsed) const;
    double normalForce(double deflection, double deflectionRate) const;
    Horizontal stiffness() const;
    double share(const Horizontal& force, const Contact& contact) const;
    Horizontal relaxationRates(const Contact& contact) const;
    Horizontal carcassForce(const Contact& contact) const;
    void slide(const Contact& contact);
    void relax(const Contact& contact, double step);

    TyreParameters parameters_;
    Horizontal carcass_;
};
