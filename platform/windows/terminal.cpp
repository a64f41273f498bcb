#include "platform/terminal.h"

#include <io.h>
#include <windows.h>

namespace platform {

bool isTerminal(std::FILE* stream) {
    return _isatty(_fileno(stream)) != 0;
}

bool narrowTextsAreUtf8() {
    return GetACP() == CP_UTF8;
}

// Handles are no small numbers that another file could get.
void holdStandardStreams() {}

} // namespace platform
