// Completes libwine-dev's <stdlib.h>.
#pragma once

#include_next <stdlib.h>

#ifdef __cplusplus
extern "C" {
#endif
float __cdecl _strtof_l(const char*, char**, _locale_t);
double __cdecl _strtod_l(const char*, char**, _locale_t);
errno_t __cdecl _dupenv_s(char**, size_t*, const char*);
#ifdef __cplusplus
}
#endif
