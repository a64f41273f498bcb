#include "example_fmus/slave/forwarding.h"

#include <optional>

namespace {

std::string textOf(fmi2String text) {
    return text != nullptr ? text : "";
}

std::optional<double> givenIf(fmi2Boolean defined, double value) {
    return defined != fmi2False ? std::optional(value) : std::nullopt;
}

} // namespace

const char* fmi2GetTypesPlatform() {
    return "default";
}

const char* fmi2GetVersion() {
    return "2.0";
}

fmi2Status fmi2SetDebugLogging(fmi2Component component, fmi2Boolean loggingOn, std::size_t,
                               const fmi2String*) {
    return forward(component,
                   [=](Slave& slave) { return slave.setDebugLogging(loggingOn != fmi2False); });
}

fmi2Component fmi2Instantiate(fmi2String instanceName, fmi2Type, fmi2String guid,
                              fmi2String resourceLocation, const fmi2CallbackFunctions* functions,
                              fmi2Boolean visible, fmi2Boolean loggingOn) {
    try {
        const Instantiation instantiation{textOf(instanceName),     textOf(guid),
                                          textOf(resourceLocation), functions,
                                          visible != fmi2False,     loggingOn != fmi2False};
        return makeSlave(instantiation).release();
    } catch (const std::exception&) {
        return nullptr;
    }
}

void fmi2FreeInstance(fmi2Component component) {
    forward(component, [](Slave& slave) {
        slave.freeInstance();
        return fmi2OK;
    });
}

fmi2Status fmi2SetupExperiment(fmi2Component component, fmi2Boolean toleranceDefined,
                               fmi2Real tolerance, fmi2Real startTime, fmi2Boolean stopTimeDefined,
                               fmi2Real stopTime) {
    return forward(component, [=](Slave& slave) {
        return slave.setupExperiment(
            {givenIf(toleranceDefined, tolerance), startTime, givenIf(stopTimeDefined, stopTime)});
    });
}

fmi2Status fmi2EnterInitializationMode(fmi2Component component) {
    return forward(component, [](Slave& slave) { return slave.enterInitializationMode(); });
}

fmi2Status fmi2ExitInitializationMode(fmi2Component component) {
    return forward(component, [](Slave& slave) { return slave.exitInitializationMode(); });
}

fmi2Status fmi2Terminate(fmi2Component component) {
    return forward(component, [](Slave& slave) { return slave.terminate(); });
}

fmi2Status fmi2Reset(fmi2Component component) {
    return forward(component, [](Slave& slave) { return slave.reset(); });
}

fmi2Status fmi2GetReal(fmi2Component component, const fmi2ValueReference* references,
                       std::size_t count, fmi2Real* values) {
    return forward(component, [=](Slave& slave) {
        return slave.getReal({references, count}, values);
    });
}

fmi2Status fmi2GetInteger(fmi2Component component, const fmi2ValueReference* references,
                          std::size_t count, fmi2Integer* values) {
    return forward(component, [=](Slave& slave) {
        return slave.getInteger({references, count}, values);
    });
}

fmi2Status fmi2GetBoolean(fmi2Component component, const fmi2ValueReference* references,
                          std::size_t count, fmi2Boolean* values) {
    return forward(component, [=](Slave& slave) {
        return slave.getBoolean({references, count}, values);
    });
}

fmi2Status fmi2GetString(fmi2Component component, const fmi2ValueReference* references,
                         std::size_t count, fmi2String* values) {
    return forward(component, [=](Slave& slave) {
        return slave.getString({references, count}, values);
    });
}

fmi2Status fmi2SetReal(fmi2Component component, const fmi2ValueReference* references,
                       std::size_t count, const fmi2Real* values) {
    return forward(component, [=](Slave& slave) {
        return slave.setReal({references, count}, values);
    });
}

fmi2Status fmi2SetInteger(fmi2Component component, const fmi2ValueReference* references,
                          std::size_t count, const fmi2Integer* values) {
    return forward(component, [=](Slave& slave) {
        return slave.setInteger({references, count}, values);
    });
}

fmi2Status fmi2SetBoolean(fmi2Component component, const fmi2ValueReference* references,
                          std::size_t count, const fmi2Boolean* values) {
    return forward(component, [=](Slave& slave) {
        return slave.setBoolean({references, count}, values);
    });
}

fmi2Status fmi2SetString(fmi2Component component, const fmi2ValueReference* references,
                         std::size_t count, const fmi2String* values) {
    return forward(component, [=](Slave& slave) {
        return slave.setString({references, count}, values);
    });
}

fmi2Status fmi2SetRealInputDerivatives(fmi2Component component, const fmi2ValueReference*,
                                       std::size_t, const fmi2Integer*, const fmi2Real*) {
    return notOffered(component, "fmi2SetRealInputDerivatives", "canInterpolateInputs");
}

fmi2Status fmi2GetRealOutputDerivatives(fmi2Component component, const fmi2ValueReference*,
                                        std::size_t, const fmi2Integer*, fmi2Real*) {
    return notOffered(component, "fmi2GetRealOutputDerivatives", "maxOutputDerivativeOrder");
}

fmi2Status fmi2CancelStep(fmi2Component component) {
    return forward(component, [](Slave& slave) { return slave.cancelStep(); });
}

fmi2Status fmi2GetStatus(fmi2Component component, fmi2StatusKind kind, fmi2Status* value) {
    return forward(component, [=](Slave& slave) { return slave.getStatus(kind, *value); });
}

fmi2Status fmi2GetRealStatus(fmi2Component component, fmi2StatusKind kind, fmi2Real* value) {
    return forward(component, [=](Slave& slave) { return slave.getRealStatus(kind, *value); });
}

fmi2Status fmi2GetIntegerStatus(fmi2Component component, fmi2StatusKind kind, fmi2Integer* value) {
    return forward(component, [=](Slave& slave) { return slave.getIntegerStatus(kind, *value); });
}

fmi2Status fmi2GetBooleanStatus(fmi2Component component, fmi2StatusKind kind, fmi2Boolean* value) {
    return forward(component, [=](Slave& slave) { return slave.getBooleanStatus(kind, *value); });
}

fmi2Status fmi2GetStringStatus(fmi2Component component, fmi2StatusKind kind, fmi2String* value) {
    return forward(component, [=](Slave& slave) { return slave.getStringStatus(kind, *value); });
}
