/** @file
 * What the application lends to the library: memory functions and a logger.
 */
#ifndef JM_CALLBACKS_H_
#define JM_CALLBACKS_H_

#include "../fmilib_config.h"
#include "jm_types.h"

#include <stdarg.h>
#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Capacity of the message buffer in jm_callbacks, the terminating zero included. */
#define JM_MAX_ERROR_MESSAGE_SIZE 2000

struct jm_callbacks;

typedef void* (*jm_malloc_f)(size_t size);
typedef void* (*jm_calloc_f)(size_t numitems, size_t itemsize);
typedef void* (*jm_realloc_f)(void* ptr, size_t size);
typedef void (*jm_free_f)(void* ptr);

/** Receives a message of the library. `message` is valid during the call only. */
typedef void (*jm_logger_f)(struct jm_callbacks* c, jm_string module, jm_log_level_enu_t level,
                            jm_string message);

/** Filled by the application and used in place: it must outlive every handle made with it. */
typedef struct jm_callbacks {
    jm_malloc_f malloc; /**< Makes the texts that the application frees. */
    jm_calloc_f calloc; /**< Lent to FMUs that are loaded without callbacks. */
    jm_realloc_f realloc;
    jm_free_f free;               /**< Counterpart of malloc and calloc. */
    jm_logger_f logger;           /**< May be null: messages then only reach errMessageBuffer. */
    jm_log_level_enu_t log_level; /**< Messages above this level are dropped. */
    void* context;                /**< The application's own; the library does not touch it. */
    char errMessageBuffer[JM_MAX_ERROR_MESSAGE_SIZE]; /**< The last message of any level. */
} jm_callbacks;

/** The callbacks used where an application gave none: the C library's memory functions, level
 * `info`, messages on standard error. Never null. */
FMILIB_EXPORT jm_callbacks* jm_get_default_callbacks(void);

/** Replaces the default callbacks; null brings back the built-in ones. */
FMILIB_EXPORT void jm_set_default_callbacks(jm_callbacks* c);

/** Writes "[LEVEL][module] message" and a line end to standard error. */
FMILIB_EXPORT void jm_default_logger(jm_callbacks* c, jm_string module, jm_log_level_enu_t level,
                                     jm_string message);

/** Name of a level in capitals, "UNEXPECTED" for any other number. Static text. */
FMILIB_EXPORT const char* jm_log_level_to_string(jm_log_level_enu_t level);

/** Formats a message as printf does into errMessageBuffer, cut to what fits, and hands it to the
 * logger. Does nothing when `level` is above the log level of `cb`; null `cb` means the defaults.
 */
FMILIB_EXPORT void jm_log(jm_callbacks* cb, const char* module, jm_log_level_enu_t level,
                          const char* fmt, ...);

/** jm_log() with its arguments in a list. */
FMILIB_EXPORT void jm_log_v(jm_callbacks* cb, const char* module, jm_log_level_enu_t level,
                            const char* fmt, va_list ap);

/** jm_log() with level fatal, error, warning, info or verbose. */
FMILIB_EXPORT void jm_log_fatal(jm_callbacks* cb, const char* module, const char* fmt, ...);
FMILIB_EXPORT void jm_log_error(jm_callbacks* cb, const char* module, const char* fmt, ...);
FMILIB_EXPORT void jm_log_warning(jm_callbacks* cb, const char* module, const char* fmt, ...);
FMILIB_EXPORT void jm_log_info(jm_callbacks* cb, const char* module, const char* fmt, ...);
FMILIB_EXPORT void jm_log_verbose(jm_callbacks* cb, const char* module, const char* fmt, ...);

/** The last message of any level. */
static inline jm_string jm_get_last_error(jm_callbacks* cb) {
    return cb->errMessageBuffer;
}

/** Forgets the last message. */
static inline void jm_clear_last_error(jm_callbacks* cb) {
    cb->errMessageBuffer[0] = 0;
}

#ifdef __cplusplus
}
#endif

#endif
