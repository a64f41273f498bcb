// A library that a slave needs beside its own.
#include "tests/fmus/scripted/needed_library.h"

int neededNumber() {
    return 7;
}
