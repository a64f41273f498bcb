#include "fmi_import/fmu.h"

namespace {

const char* textOf(const fmi2_import_t* fmu, const char* fmi_import::ModelDescription::*text) {
    return fmu != nullptr ? fmu->description.*text : "";
}

} // namespace

fmi2_fmu_kind_enu_t fmi2_import_get_fmu_kind(fmi2_import_t* fmu) {
    return fmu != nullptr ? static_cast<fmi2_fmu_kind_enu_t>(fmu->description.kind)
                          : fmi2_fmu_kind_unknown;
}

unsigned fmi2_import_get_capability(fmi2_import_t* fmu, fmi2_capabilities_enu_t capability) {
    if (fmu == nullptr) {
        return 0;
    }
    const fmi_import::Capabilities& has = fmu->description.capabilities;
    switch (capability) {
    case fmi2_cs_canBeInstantiatedOnlyOncePerProcess:
        return has.onlyOncePerProcess ? 1 : 0;
    case fmi2_cs_canGetAndSetFMUstate:
        return has.getAndSetState ? 1 : 0;
    case fmi2_cs_canSerializeFMUstate:
        return has.serializeState ? 1 : 0;
    case fmi2_cs_providesDirectionalDerivatives:
        return has.directionalDerivative ? 1 : 0;
    }
    return 0;
}

const char* fmi2_import_get_model_name(fmi2_import_t* fmu) {
    return textOf(fmu, &fmi_import::ModelDescription::modelName);
}

const char* fmi2_import_get_GUID(fmi2_import_t* fmu) {
    return textOf(fmu, &fmi_import::ModelDescription::guid);
}

const char* fmi2_import_get_model_identifier_ME(fmi2_import_t* fmu) {
    return textOf(fmu, &fmi_import::ModelDescription::modelExchangeIdentifier);
}

const char* fmi2_import_get_model_identifier_CS(fmi2_import_t* fmu) {
    return textOf(fmu, &fmi_import::ModelDescription::coSimulationIdentifier);
}

const char* fmi2_import_get_generation_tool(fmi2_import_t* fmu) {
    return textOf(fmu, &fmi_import::ModelDescription::generationTool);
}

const char* fmi2_import_get_description(fmi2_import_t* fmu) {
    return textOf(fmu, &fmi_import::ModelDescription::description);
}
