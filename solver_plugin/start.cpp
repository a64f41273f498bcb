#include "solver_plugin/start.h"

#include "solver_plugin/plugin_log.h"
#include "solver_plugin/run_state.h"

#include <string>
#include <string_view>
#include <vector>

namespace solver_plugin {

namespace {

constexpr const char* identificationVariable = "fTireWorld.xmxKey";
constexpr std::int32_t identificationValue = 58213407;

void applyParameter(FmiToolsInstance* fmu, const char* name, const char* value) {
    logLine(fmu, "OK", "Setting parameter %s=%s", name, value);
    if (fmiToolsSetVariableValue(fmu, name, value) != 0) {
        logLine(fmu, "Warning", "Failed to set parameter");
    }
}

std::int32_t explainMissingIdentification(FmiToolsInstance* fmu) {
    for (const char* line :
         {"Was expecting FTIRE input model. However, unable to retrieve identifier from input "
          "model (FMU) to verify this model is of type FTIRE. This could be either because:",
          "1. This input model is not an FTIRE type FMU",
          "2. There is a problem with the interface to FTIRE",
          "3. There was an error computing initial forces using FTIRE", "To resolve:",
          "1. If the input model is really an FTIRE FMU, ensure it is declared correctly in the "
          "XML (-fmutype FTIRE)",
          "2. Check ftirezol.log to see further info regarding the FTIRE interface",
          "3. Check ftirezol.log and the .out for information regarding any computation "
          "errors."}) {
        logLine(fmu, "Error", "%s", line);
    }
    return kindMismatch;
}

std::int32_t checkForFtire(FmiToolsInstance* fmu) {
    logLine(fmu, "OK", "Expecting input model (FMU) of type: FTIRE");
    std::int32_t value = 0;
    if (fmiToolsGetIntegerVariableValue(fmu, identificationVariable, &value) != 0) {
        return explainMissingIdentification(fmu);
    }
    if (value != identificationValue) {
        logLine(fmu, "Error",
                "Was expecting input model of type FTIRE. However, the input model and FTIRE-ZOL "
                "interface contain inconsistent identification.");
        return kindMismatch;
    }
    logLine(fmu, "OK", "Found FTIRE FMU.");
    return 0;
}

std::int32_t checkForDynamodeler(FmiToolsInstance* fmu) {
    logLine(fmu, "OK", "Expecting input model (FMU) of type: Dynamodeler");
    std::int32_t exists = 0;
    if (fmiToolsGetVariableExists(fmu, identificationVariable, &exists) == 0 && exists == 0) {
        logLine(fmu, "OK", "Found Dynamodeler FMU.");
        return 0;
    }
    logLine(fmu, "Error",
            "Incorrect input model type. Found input model (FMU) of type: FTIRE. Was expecting an "
            "input model (FMU) of type: Dynamodeler. Exiting...");
    logLine(fmu, "Error", "Please check the input model type specified (-fmutype) in the XML.");
    return kindMismatch;
}

std::int32_t checkKind(FmiToolsInstance* fmu, std::string_view kindText) {
    logLine(fmu, "OK", "Checking FMUType");
    return kindText == "FTIRE" ? checkForFtire(fmu) : checkForDynamodeler(fmu);
}

} // namespace

std::int32_t startRun(const SolverCore& core, SimulationDataModel* /*model*/,
                      ModelSetup* /*modelSetup*/) {
    const auto parameters = core.settings->parameters();
    std::vector<const char*> names;
    std::vector<const char*> values;
    for (const auto& [name, value] : parameters) {
        names.push_back(name.c_str());
        values.push_back(value.c_str());
    }
    const std::string kindText = core.settings->fmuType();
    const std::size_t count = names.size();
    return startSolver(core.runtime, count == 0 ? nullptr : names.data(),
                       count == 0 ? nullptr : values.data(), count, kindText.c_str());
}

std::int32_t startSolver(FmiToolsInstance* fmu, const char* const* names, const char* const* values,
                         std::size_t count, const char* kindText) {
    const auto permission = mayStart(fmu);
    if (permission.result < 0) {
        logLine(fmu, "Error", "Cannot start solver as state is: %s", stateText(fmu));
        return permission.result;
    }
    if (!permission.granted) {
        return 0;
    }
    logLine(fmu, "OK", "Starting plugin");
    recordKind(fmu, kindText);
    for (std::size_t i = 0; i < count; ++i) {
        applyParameter(fmu, names[i], values[i]);
    }
    std::int32_t result = fmiToolsStartInitialization(fmu);
    if (result != 0) {
        logLine(fmu, "Error", "Failed to initialise FMU");
        return result;
    }
    result = checkKind(fmu, kindText);
    if (result == 0) {
        setState(fmu, SolverState::started);
    }
    return result;
}

} // namespace solver_plugin
