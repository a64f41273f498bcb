// Completes libwine-dev's <signal.h>.
#pragma once

#include_next <signal.h>

typedef int sig_atomic_t; // NOLINT(modernize-use-using): C, too
