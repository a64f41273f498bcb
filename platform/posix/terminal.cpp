#include "platform/terminal.h"

#include <fcntl.h>
#include <unistd.h>

namespace platform {

bool isTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) != 0;
}

bool narrowTextsAreUtf8() {
    return true;
}

void holdStandardStreams() {
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        if (fcntl(stream, F_GETFD) < 0) {
            // The lowest free number is this one. The wrong direction makes each use of it fail.
            static_cast<void>(open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY));
        }
    }
}

} // namespace platform
