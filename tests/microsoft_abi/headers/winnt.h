// Goes before libwine-dev's <winnt.h>: wide letters are wchar_t, and what is a built-in function of
// clang is not defined a second time.
#pragma once

#define WINE_UNICODE_NATIVE
#define _InterlockedCompareExchange128 wineInterlockedCompareExchange128
#include_next <winnt.h>
#undef _InterlockedCompareExchange128
