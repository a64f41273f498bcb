// The functions whose capability a model description has to announce stand alone so that a slave
// can be built that lacks them.
#include "example_fmus/slave/forwarding.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace {

SlaveState& stateOf(fmi2FMUstate state) {
    if (state == nullptr) {
        throw std::invalid_argument("The FMU state that was given is a null pointer.");
    }
    return *static_cast<SlaveState*>(state);
}

/** Lets @p handle stand for @p state: where it stands for an earlier one, that is replaced. */
void keep(SlaveState state, fmi2FMUstate& handle) {
    if (handle == nullptr) {
        handle = new SlaveState(std::move(state));
    } else {
        stateOf(handle) = std::move(state);
    }
}

} // namespace

fmi2Status fmi2GetFMUstate(fmi2Component component, fmi2FMUstate* state) {
    return forward(component, [=](Slave& slave) {
        keep(slave.state(), *state);
        return fmi2OK;
    });
}

fmi2Status fmi2SetFMUstate(fmi2Component component, fmi2FMUstate state) {
    return forward(component, [=](Slave& slave) {
        slave.setState(stateOf(state));
        return fmi2OK;
    });
}

fmi2Status fmi2FreeFMUstate(fmi2Component component, fmi2FMUstate* state) {
    return forward(component, [=](Slave&) {
        if (state != nullptr) {
            delete static_cast<SlaveState*>(std::exchange(*state, nullptr));
        }
        return fmi2OK;
    });
}

fmi2Status fmi2SerializedFMUstateSize(fmi2Component component, fmi2FMUstate state,
                                      std::size_t* size) {
    return forward(component, [=](Slave&) {
        *size = stateOf(state).size();
        return fmi2OK;
    });
}

fmi2Status fmi2SerializeFMUstate(fmi2Component component, fmi2FMUstate state, fmi2Byte* bytes,
                                 std::size_t size) {
    return forward(component, [=](Slave&) {
        const SlaveState& kept = stateOf(state);
        if (size < kept.size()) {
            throw std::length_error("The state has " + std::to_string(kept.size()) +
                                    " bytes, but there is room for " + std::to_string(size) + ".");
        }
        std::copy(kept.begin(), kept.end(), bytes);
        return fmi2OK;
    });
}

fmi2Status fmi2DeSerializeFMUstate(fmi2Component component, const fmi2Byte* bytes, std::size_t size,
                                   fmi2FMUstate* state) {
    return forward(component, [=](Slave& slave) {
        SlaveState given(bytes, bytes + size);
        slave.requireState(given);
        keep(std::move(given), *state);
        return fmi2OK;
    });
}

fmi2Status fmi2GetDirectionalDerivative(fmi2Component component, const fmi2ValueReference*,
                                        std::size_t, const fmi2ValueReference*, std::size_t,
                                        const fmi2Real*, fmi2Real*) {
    return notOffered(component, "fmi2GetDirectionalDerivative", "providesDirectionalDerivative");
}
