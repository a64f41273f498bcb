// Completes libwine-dev's <math.h>: Microsoft's has the classification of numbers as overloads for
// C++, where Wine has macros for C alone.
#pragma once

#include_next <math.h>

#ifdef __cplusplus
#undef fpclassify
#undef isfinite
#undef isinf
#undef isnan
#undef isnormal
#undef signbit

inline bool isfinite(double number) noexcept {
    return __builtin_isfinite(number);
}

inline bool isfinite(float number) noexcept {
    return __builtin_isfinite(number);
}

inline bool isfinite(long double number) noexcept {
    return __builtin_isfinite(number);
}

inline bool isinf(double number) noexcept {
    return __builtin_isinf(number);
}

inline bool isinf(float number) noexcept {
    return __builtin_isinf(number);
}

inline bool isinf(long double number) noexcept {
    return __builtin_isinf(number);
}

inline bool isnan(double number) noexcept {
    return __builtin_isnan(number);
}

inline bool isnan(float number) noexcept {
    return __builtin_isnan(number);
}

inline bool isnan(long double number) noexcept {
    return __builtin_isnan(number);
}

inline bool signbit(double number) noexcept {
    return __builtin_signbit(number);
}

inline bool signbit(float number) noexcept {
    return __builtin_signbit(number);
}

inline bool signbit(long double number) noexcept {
    return __builtin_signbit(number);
}
#endif
