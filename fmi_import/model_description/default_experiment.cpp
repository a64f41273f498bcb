#include "fmi_import/fmu.h"

namespace {

using fmi_import::DefaultExperiment;
using fmi_import::ExperimentValue;

/// A value of the default experiment; a default in its place is pointed out.
double experimentValue(const fmi2_import_t* fmu, ExperimentValue which, const char* name) {
    if (fmu == nullptr) {
        return DefaultExperiment{}.values[which];
    }
    const DefaultExperiment& experiment = fmu->description.defaultExperiment;
    if (!experiment.isGiven[which]) {
        fmu->log.warning(fmi_import::module::modelDescription,
                         {"fmi2_xml_get_default_experiment_", name,
                          ": returning default value, since no attribute was defined in "
                          "modelDescription"});
    }
    return experiment.values[which];
}

int isGiven(const fmi2_import_t* fmu, ExperimentValue which) {
    return fmu != nullptr && fmu->description.defaultExperiment.isGiven[which] ? 1 : 0;
}

} // namespace

double fmi2_import_get_default_experiment_start(fmi2_import_t* fmu) {
    return experimentValue(fmu, fmi_import::startTime, "start");
}

double fmi2_import_get_default_experiment_stop(fmi2_import_t* fmu) {
    return experimentValue(fmu, fmi_import::stopTime, "stop");
}

double fmi2_import_get_default_experiment_tolerance(fmi2_import_t* fmu) {
    return experimentValue(fmu, fmi_import::tolerance, "tolerance");
}

double fmi2_import_get_default_experiment_step(fmi2_import_t* fmu) {
    return experimentValue(fmu, fmi_import::stepSize, "step");
}

int fmi2_import_get_default_experiment_has_start(fmi2_import_t* fmu) {
    return isGiven(fmu, fmi_import::startTime);
}

int fmi2_import_get_default_experiment_has_stop(fmi2_import_t* fmu) {
    return isGiven(fmu, fmi_import::stopTime);
}

int fmi2_import_get_default_experiment_has_tolerance(fmi2_import_t* fmu) {
    return isGiven(fmu, fmi_import::tolerance);
}

int fmi2_import_get_default_experiment_has_step(fmi2_import_t* fmu) {
    return isGiven(fmu, fmi_import::stepSize);
}
