/** @file
 * Basic types of the library.
 */
#ifndef JM_TYPES_H_
#define JM_TYPES_H_

/** A zero-terminated text. */
typedef const char* jm_string;

/** Untyped memory. */
typedef void* jm_voidp;

/** Result of functions that either work or do not. */
typedef enum { jm_status_error = -1, jm_status_success = 0, jm_status_warning = 1 } jm_status_enu_t;

/** Weight of a message; a higher number is less important. */
typedef enum {
    jm_log_level_nothing = 0,
    jm_log_level_fatal = 1,
    jm_log_level_error = 2,
    jm_log_level_warning = 3,
    jm_log_level_info = 4,
    jm_log_level_verbose = 5,
    jm_log_level_debug = 6,
    jm_log_level_all = 7
} jm_log_level_enu_t;

#endif
