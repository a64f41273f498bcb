#include "example_fmus/slave/slave.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace {

const char* categoryOf(fmi2Status status) {
    switch (status) {
    case fmi2OK:
        return "logEvents";
    case fmi2Warning:
        return "logStatusWarning";
    default:
        return "logStatusError";
    }
}

void send(const Instantiation& instantiation, fmi2Status status, const std::string& message) {
    const fmi2CallbackFunctions* functions = instantiation.functions;
    if (functions != nullptr && functions->logger != nullptr) {
        functions->logger(functions->componentEnvironment, instantiation.instanceName.c_str(),
                          status, categoryOf(status), "%s", message.c_str());
    }
}

} // namespace

Slave::Slave(Instantiation instantiation, const VariableCounts& counts)
    : reals(counts.reals),
      integers(counts.integers),
      booleans(counts.booleans),
      strings(counts.strings),
      instantiation_(std::move(instantiation)) {}

fmi2Status Slave::setDebugLogging(bool loggingOn) {
    instantiation_.loggingOn = loggingOn;
    return fmi2OK;
}

fmi2Status Slave::setupExperiment(const Experiment&) {
    return fmi2OK;
}

fmi2Status Slave::getReal(References references, fmi2Real* values) {
    return checked(reals.get(references, values), references);
}

fmi2Status Slave::getInteger(References references, fmi2Integer* values) {
    return checked(integers.get(references, values), references);
}

fmi2Status Slave::getBoolean(References references, fmi2Boolean* values) {
    return checked(booleans.get(references, values), references);
}

fmi2Status Slave::getString(References references, fmi2String* values) {
    return checked(strings.get(references, values), references);
}

fmi2Status Slave::setReal(References references, const fmi2Real* values) {
    return checked(reals.set(references, values), references);
}

fmi2Status Slave::setInteger(References references, const fmi2Integer* values) {
    return checked(integers.set(references, values), references);
}

fmi2Status Slave::setBoolean(References references, const fmi2Boolean* values) {
    return checked(booleans.set(references, values), references);
}

fmi2Status Slave::setString(References references, const fmi2String* values) {
    return checked(strings.set(references, values), references);
}

SlaveState Slave::state() {
    SlaveState state(instantiation_.guid.begin(), instantiation_.guid.end());
    for (const std::span<std::byte> part : stateParts()) {
        const auto* bytes = reinterpret_cast<const fmi2Byte*>(part.data());
        state.insert(state.end(), bytes, bytes + part.size());
    }
    return state;
}

void Slave::requireState(const SlaveState& given) {
    const std::string& guid = instantiation_.guid;
    if (given.size() != state().size() || !std::equal(guid.begin(), guid.end(), given.begin())) {
        throw std::runtime_error("The bytes that were given are no state of this FMU.");
    }
}

void Slave::setState(const SlaveState& state) {
    requireState(state);
    const fmi2Byte* next = state.data() + instantiation_.guid.size();
    for (const std::span<std::byte> part : stateParts()) {
        std::copy_n(next, part.size(), reinterpret_cast<fmi2Byte*>(part.data()));
        next += part.size();
    }
}

std::vector<std::span<std::byte>> Slave::stateParts() {
    const std::optional<std::span<std::byte>> own = memory();
    if (!own) {
        throw std::runtime_error("This FMU does not offer its state: modelDescription.xml does not "
                                 "announce canGetAndSetFMUstate.");
    }
    return {std::as_writable_bytes(reals.all()), std::as_writable_bytes(integers.all()),
            std::as_writable_bytes(booleans.all()), *own};
}

void Slave::log(fmi2Status status, const std::string& message) const {
    if (status != fmi2OK || instantiation_.loggingOn) {
        send(instantiation_, status, message);
    }
}

fmi2Status Slave::checked(bool known, References references) const {
    if (known) {
        return fmi2OK;
    }
    std::string message = "Unknown value reference among:";
    for (fmi2ValueReference reference : references) {
        message.append(" ").append(std::to_string(reference));
    }
    log(fmi2Error, message);
    return fmi2Error;
}

void logInstantiationError(const Instantiation& instantiation, const std::string& message) {
    send(instantiation, fmi2Error, message);
}

bool guidMatches(const Instantiation& instantiation, const std::string& guid) {
    if (instantiation.guid == guid) {
        return true;
    }
    logInstantiationError(instantiation, "The model description has the GUID '" +
                                             instantiation.guid + "', but the binary has '" + guid +
                                             "': they do not belong together.");
    return false;
}
