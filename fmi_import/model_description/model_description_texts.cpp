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
