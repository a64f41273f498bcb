#pragma once

#include "example_fmus/fmi2_functions.h"

/** A number that only the library beside the slave knows. */
extern "C" FMI2_EXPORT int neededNumber();
