/** @file
 * How the functions of the library are imported and exported.
 */
#ifndef FMILIB_CONFIG_H_
#define FMILIB_CONFIG_H_

#if defined(FMILIB_STATIC_LIB_ONLY)
#define FMILIB_EXPORT
#elif defined(_WIN32)
#if defined(FMILIB_BUILDING_LIBRARY)
#define FMILIB_EXPORT __declspec(dllexport)
#else
#define FMILIB_EXPORT __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define FMILIB_EXPORT __attribute__((visibility("default")))
#else
#define FMILIB_EXPORT
#endif

#endif
