#pragma once

#include "programs/cosim_host/signal.h"
#include "programs/cosim_host/vector_slots.h"
#include "reference_host/simulation.h"

#include <vector>

namespace cosim_host {

/// Motion of an upright wheel's hub that runs straight ahead, and the road below it. SI units.
struct HubMotion {
    double distance = 0.0; ///< Along the road.
    double left = 0.0;     ///< Of the middle of the road.
    double height = 0.0;
    double speed = 0.0;
    double verticalVelocity = 0.0;
    double spin = 0.0;
    double roadHeight = 0.0;
    double roadHeightRate = 0.0;
};

/// Whether the solver takes vectors apart itself; else each component is exchanged on its own.
struct ArrayUse {
    bool inputs = true;
    bool outputs = false;
};

/// What a host and the solver of a tyre exchange: the hub's motion and the road one way, force and
/// moment on the hub the other.
class TyreExchange {
  public:
    /// Adds the coupled conditions and output results to `simulation`, which must outlive this.
    TyreExchange(reference_host::Simulation& simulation, ArrayUse arrays);

    void impose(const HubMotion& hub) const;

    /// Vertical force on the hub in N, upwards.
    [[nodiscard]] double verticalForce() const { return force_[2].value(); }

    /// The components of force and moment.
    [[nodiscard]] std::vector<Signal> signals() const;

  private:
    VectorSlots position_;
    VectorSlots orientation_;
    VectorSlots velocity_;
    VectorSlots angularVelocity_;
    Slot roadHeight_;
    Slot roadHeightRate_;
    VectorSlots roadNormal_;
    Slot friction_;
    VectorSlots force_;
    VectorSlots moment_;
};

} // namespace cosim_host
