// Completes libwine-dev's <processthreadsapi.h>, which lacks a function of kernel32.dll.
#pragma once

#include_next <processthreadsapi.h>

extern "C" WINBASEAPI BOOL WINAPI SetThreadStackGuarantee(PULONG);
