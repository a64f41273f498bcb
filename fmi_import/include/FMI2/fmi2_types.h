/** @file
 * Types of values that pass between application and FMU (FMI 2.0 section 2.1.2).
 */
#ifndef FMI2_TYPES_H_
#define FMI2_TYPES_H_

typedef void* fmi2_component_t;
typedef void* fmi2_component_environment_t;
typedef void* fmi2_FMU_state_t;
typedef unsigned int fmi2_value_reference_t;
typedef double fmi2_real_t;
typedef int fmi2_integer_t;
typedef int fmi2_boolean_t;
typedef char fmi2_char_t;
typedef const fmi2_char_t* fmi2_string_t;
typedef char fmi2_byte_t;

/** Values of fmi2_boolean_t. */
typedef enum { fmi2_false = 0, fmi2_true = 1 } fmi2_boolean_enu_t;

/** The types platform that this library speaks. */
static inline const char* fmi2_get_types_platform(void) {
    return "default";
}

#endif
