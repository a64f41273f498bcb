// Completes libwine-dev's <time.h>.
#pragma once

#include_next <time.h>

struct timespec {
    time_t tv_sec;
    long tv_nsec;
};

static inline errno_t localtime_s(struct tm* local, const time_t* time) {
    return _localtime64_s(local, time);
}
