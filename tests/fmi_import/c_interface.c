/* The interface as a C11 program sees it: record layouts, values, and answers to null. */
#include <assert.h>
#include <fmilib.h>
#include <stdio.h>
#include <string.h>

static_assert(sizeof(jm_callbacks) == 2056, "jm_callbacks");
static_assert(offsetof(jm_callbacks, calloc) == 8 && offsetof(jm_callbacks, realloc) == 16 &&
                  offsetof(jm_callbacks, free) == 24 && offsetof(jm_callbacks, logger) == 32 &&
                  offsetof(jm_callbacks, log_level) == 40 &&
                  offsetof(jm_callbacks, context) == 48 &&
                  offsetof(jm_callbacks, errMessageBuffer) == 56,
              "jm_callbacks");
static_assert(sizeof(fmi2_callback_functions_t) == 40, "fmi2_callback_functions_t");
static_assert(offsetof(fmi2_callback_functions_t, allocateMemory) == 8 &&
                  offsetof(fmi2_callback_functions_t, freeMemory) == 16 &&
                  offsetof(fmi2_callback_functions_t, stepFinished) == 24 &&
                  offsetof(fmi2_callback_functions_t, componentEnvironment) == 32,
              "fmi2_callback_functions_t");
static_assert(sizeof(fmi2_xml_callbacks_t) == 32, "fmi2_xml_callbacks_t");
static_assert(sizeof(fmi2_status_t) == 4 && sizeof(jm_status_enu_t) == 4, "enumerations");
static_assert(sizeof(fmi2_value_reference_t) == 4 && sizeof(fmi2_boolean_t) == 4, "scalars");

static int failures = 0;

static void check(int holds, const char* what) {
    if (!holds) {
        fprintf(stderr, "failed: %s\n", what);
        ++failures;
    }
}

static void checkText(const char* text, const char* expected) {
    check(strcmp(text, expected) == 0, expected);
}

static void checkNames(void) {
    checkText(fmi2_get_types_platform(), "default");
    checkText(fmi2_status_to_string(fmi2_status_discard), "Discard");
    checkText(fmi2_status_to_string((fmi2_status_t)77), "Undefined");
    checkText(fmi2_status_to_string((fmi2_status_t)-1), "Undefined");
    checkText(fmi2_fmu_kind_to_string(fmi2_fmu_kind_me_and_cs), "ModelExchange and CoSimulation");
    checkText(fmi2_causality_to_string(fmi2_causality_enu_calculated_parameter),
              "calculatedParameter");
    checkText(fmi2_causality_to_string(fmi2_causality_enu_unknown), "Unknown");
    checkText(fmi2_variability_to_string(fmi2_variability_enu_tunable), "tunable");
    checkText(fmi2_initial_to_string(fmi2_initial_enu_unknown), "Undefined");
    checkText(fmi2_base_type_to_string(fmi2_base_type_enum), "Enumeration");
    checkText(fmi2_base_type_to_string((fmi2_base_type_enu_t)5), "Error");
    checkText(fmi_version_to_string(fmi_version_3_0_enu), "3.0");
    checkText(fmi_version_to_string(fmi_version_unsupported_enu), "unknown");
    checkText(jm_log_level_to_string(jm_log_level_all), "ALL");
    checkText(jm_log_level_to_string((jm_log_level_enu_t)8), "UNEXPECTED");
}

static void checkNullHandles(void) {
    fmi2_real_t value = 0.0;
    const fmi2_value_reference_t reference = 0;
    fmi_import_free_context(NULL);
    fmi2_import_free(NULL);
    fmi2_import_free_variable_list(NULL);
    fmi2_import_destroy_dllfmu(NULL);
    fmi2_import_free_instance(NULL);
    check(fmi_import_get_fmi_version(NULL, "a", "b") == fmi_version_unknown_enu, "version");
    check(fmi2_import_parse_xml(NULL, "a", NULL) == NULL, "parse");
    check(fmi2_import_create_dllfmu(NULL, fmi2_fmu_kind_cs, NULL) == jm_status_error, "load");
    check(fmi2_import_instantiate(NULL, "i", fmi2_cosimulation, NULL, 0) == jm_status_error,
          "inst");
    check(fmi2_import_do_step(NULL, 0.0, 1.0, 1) == fmi2_status_fatal, "step");
    check(fmi2_import_get_real(NULL, &reference, 1, &value) == fmi2_status_fatal, "get");
    check(fmi2_import_get_version(NULL) == NULL, "get_version");
    check(fmi2_import_get_variable_list(NULL, 0) == NULL, "list");
    check(fmi2_import_get_variable_list_size(NULL) == 0, "size");
    check(fmi2_import_get_variable(NULL, 0) == NULL, "variable");
    check(fmi2_import_get_variable_by_name(NULL, "x") == NULL, "by name");
    check(fmi2_import_get_variable_as_real(NULL) == NULL, "as real");
    check(fmi2_import_get_real_variable_unit(NULL) == NULL, "unit");
    check(fmi2_import_get_unit_name(NULL) == NULL, "unit name");
    check(fmi2_import_get_default_experiment_stop(NULL) == 1.0, "stop time");
    check(fmi2_import_get_default_experiment_has_start(NULL) == 0, "has start time");
    check(fmi2_import_get_default_experiment_has_stop(NULL) == 0, "has stop time");
    checkText(fmi2_import_get_description(NULL), "");
    check(fmi_import_get_model_description_path(NULL, NULL) == NULL, "path");
    check(fmi_import_rmdir(NULL, NULL) == jm_status_error, "rmdir");
}

static void logInList(jm_callbacks* callbacks, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    jm_log_v(callbacks, "MODULE", jm_log_level_error, format, arguments);
    va_end(arguments);
}

static void checkDefaultCallbacks(void) {
    jm_callbacks own = *jm_get_default_callbacks();
    own.logger = NULL;
    jm_set_default_callbacks(&own);
    check(jm_get_default_callbacks() == &own, "own defaults");
    jm_log(NULL, "MODULE", jm_log_level_error, "%s %d", "text", 7);
    checkText(jm_get_last_error(&own), "text 7");
    jm_log_verbose(&own, "MODULE", "suppressed");
    checkText(own.errMessageBuffer, "text 7");
    jm_log(&own, "MODULE", jm_log_level_info, "%3000d", 1);
    check(strlen(own.errMessageBuffer) == JM_MAX_ERROR_MESSAGE_SIZE - 1, "cut message");
    jm_log_info(&own, "MODULE", "%s", "info");
    checkText(own.errMessageBuffer, "info");
    jm_log_warning(&own, "MODULE", "%s", "warning");
    checkText(own.errMessageBuffer, "warning");
    jm_log_error(&own, "MODULE", "%s", "error");
    checkText(own.errMessageBuffer, "error");
    jm_log_fatal(&own, "MODULE", "%s", "fatal");
    checkText(own.errMessageBuffer, "fatal");
    logInList(&own, "%d in a list", 2);
    checkText(own.errMessageBuffer, "2 in a list");
    jm_default_logger(&own, "MODULE", jm_log_level_info, "written to standard error");
    jm_clear_last_error(&own);
    checkText(jm_get_last_error(&own), "");
    jm_set_default_callbacks(NULL);
    check(jm_get_default_callbacks() != &own, "built-in defaults");
}

int main(void) {
    checkNames();
    checkNullHandles();
    checkDefaultCallbacks();
    return failures == 0 ? 0 : 1;
}
