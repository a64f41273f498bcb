// Completes libwine-dev's <io.h>: there `open` is a macro, which would rename every member of that name.
#pragma once

#include_next <io.h>

#undef open
#undef sopen
