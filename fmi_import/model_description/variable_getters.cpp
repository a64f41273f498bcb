#include "FMI2/fmi2_import_variable.h"
#include "fmi_import/model_description/model_description.h"

namespace {

/// The same pointer under the name of its type; null when the variable is of another type.
template <typename Typed>
Typed* as(fmi2_import_variable_t* variable, fmi2_base_type_enu_t type) {
    return variable != nullptr && variable->type() == type ? reinterpret_cast<Typed*>(variable)
                                                           : nullptr;
}

/// The reverse of as().
template <typename Typed>
const fmi2_import_variable_t* plain(const Typed* variable) {
    return reinterpret_cast<const fmi2_import_variable_t*>(variable);
}

template <typename Typed>
int integerStart(const Typed* variable) {
    return variable != nullptr ? plain(variable)->start.integer : 0;
}

} // namespace

const char* fmi2_import_get_variable_name(fmi2_import_variable_t* v) {
    return v != nullptr ? v->name : nullptr;
}

const char* fmi2_import_get_variable_description(fmi2_import_variable_t* v) {
    return v != nullptr ? v->description : nullptr;
}

fmi2_value_reference_t fmi2_import_get_variable_vr(fmi2_import_variable_t* v) {
    return v != nullptr ? v->valueReference : ~fmi2_value_reference_t{0};
}

fmi2_base_type_enu_t fmi2_import_get_variable_base_type(fmi2_import_variable_t* v) {
    return v != nullptr ? v->type() : fmi2_base_type_real;
}

fmi2_causality_enu_t fmi2_import_get_causality(fmi2_import_variable_t* v) {
    return v != nullptr ? static_cast<fmi2_causality_enu_t>(v->causality)
                        : fmi2_causality_enu_unknown;
}

fmi2_variability_enu_t fmi2_import_get_variability(fmi2_import_variable_t* v) {
    return v != nullptr ? static_cast<fmi2_variability_enu_t>(v->variability)
                        : fmi2_variability_enu_unknown;
}

fmi2_initial_enu_t fmi2_import_get_initial(fmi2_import_variable_t* v) {
    return v != nullptr ? static_cast<fmi2_initial_enu_t>(v->initial) : fmi2_initial_enu_unknown;
}

int fmi2_import_get_variable_has_start(fmi2_import_variable_t* v) {
    return v != nullptr && v->hasStart ? 1 : 0;
}

fmi2_variable_alias_kind_enu_t fmi2_import_get_variable_alias_kind(fmi2_import_variable_t* v) {
    return v != nullptr && v->isAlias ? fmi2_variable_is_alias : fmi2_variable_is_not_alias;
}

fmi2_import_real_variable_t* fmi2_import_get_variable_as_real(fmi2_import_variable_t* v) {
    return as<fmi2_import_real_variable_t>(v, fmi2_base_type_real);
}

fmi2_import_integer_variable_t* fmi2_import_get_variable_as_integer(fmi2_import_variable_t* v) {
    return as<fmi2_import_integer_variable_t>(v, fmi2_base_type_int);
}

fmi2_import_bool_variable_t* fmi2_import_get_variable_as_boolean(fmi2_import_variable_t* v) {
    return as<fmi2_import_bool_variable_t>(v, fmi2_base_type_bool);
}

fmi2_import_string_variable_t* fmi2_import_get_variable_as_string(fmi2_import_variable_t* v) {
    return as<fmi2_import_string_variable_t>(v, fmi2_base_type_str);
}

fmi2_import_enum_variable_t* fmi2_import_get_variable_as_enum(fmi2_import_variable_t* v) {
    return as<fmi2_import_enum_variable_t>(v, fmi2_base_type_enum);
}

fmi2_real_t fmi2_import_get_real_variable_start(fmi2_import_real_variable_t* v) {
    return v != nullptr ? plain(v)->start.real : 0.0;
}

int fmi2_import_get_integer_variable_start(fmi2_import_integer_variable_t* v) {
    return integerStart(v);
}

fmi2_boolean_t fmi2_import_get_boolean_variable_start(fmi2_import_bool_variable_t* v) {
    return integerStart(v);
}

const char* fmi2_import_get_string_variable_start(fmi2_import_string_variable_t* v) {
    return v != nullptr ? plain(v)->start.text : "";
}

int fmi2_import_get_enum_variable_start(fmi2_import_enum_variable_t* v) {
    return integerStart(v);
}

fmi2_import_unit_t* fmi2_import_get_real_variable_unit(fmi2_import_real_variable_t* v) {
    return v != nullptr ? plain(v)->unit : nullptr;
}

const char* fmi2_import_get_unit_name(fmi2_import_unit_t* u) {
    return u != nullptr ? u->name : nullptr;
}
