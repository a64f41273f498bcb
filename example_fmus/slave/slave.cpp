#include "example_fmus/slave/slave.h"

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
