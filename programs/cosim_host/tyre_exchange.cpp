#include "programs/cosim_host/tyre_exchange.h"

#include <string>

namespace cosim_host {

namespace {

constexpr double dryRoad = 1.0; // friction coefficient

void setVector(const VectorSlots& slots, double x, double y, double z) {
    slots[0].setValue(x);
    slots[1].setValue(y);
    slots[2].setValue(z);
}

void addComponents(std::vector<Signal>& signals, const std::string& name, const std::string& unit,
                   const VectorSlots& slots) {
    for (int i = 0; i < 3; ++i) {
        const Slot slot = slots[static_cast<std::size_t>(i)];
        signals.push_back({componentName(name, i), unit, [slot] { return slot.value(); }});
    }
}

} // namespace

TyreExchange::TyreExchange(reference_host::Simulation& simulation, ArrayUse arrays)
    : position_(addInputVector(simulation, "hubPosition", arrays.inputs)),
      orientation_(addInputVector(simulation, "hubOrientation", arrays.inputs)),
      velocity_(addInputVector(simulation, "hubVelocity", arrays.inputs)),
      angularVelocity_(addInputVector(simulation, "hubAngularVelocity", arrays.inputs)),
      roadHeight_(simulation.addCoupledCondition("roadHeight", 1), 0),
      roadHeightRate_(simulation.addCoupledCondition("roadHeightRate", 1), 0),
      roadNormal_(addInputVector(simulation, "roadNormal", arrays.inputs)),
      friction_(simulation.addCoupledCondition("friction", 1), 0),
      force_(addOutputVector(simulation, "force", arrays.outputs)),
      moment_(addOutputVector(simulation, "moment", arrays.outputs)) {}

void TyreExchange::impose(const HubMotion& hub) const {
    setVector(position_, hub.distance, hub.left, hub.height);
    setVector(velocity_, hub.speed, 0.0, hub.verticalVelocity);
    setVector(orientation_, 0.0, 0.0, 0.0);
    setVector(angularVelocity_, 0.0, hub.spin, 0.0);
    roadHeight_.setValue(hub.roadHeight);
    roadHeightRate_.setValue(hub.roadHeightRate);
    setVector(roadNormal_, 0.0, 0.0, 1.0);
    friction_.setValue(dryRoad);
}

std::vector<Signal> TyreExchange::signals() const {
    std::vector<Signal> signals;
    addComponents(signals, "force", "N", force_);
    addComponents(signals, "moment", "N.m", moment_);
    return signals;
}

} // namespace cosim_host
