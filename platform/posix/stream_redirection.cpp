#include "platform/stream_redirection.h"

#include <fcntl.h>
#include <unistd.h>

namespace platform {

StreamRedirection::StreamRedirection(std::FILE* stream, const std::string& path) : stream_(stream) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (file < 0) {
        return;
    }
    std::fflush(stream_);
    const int kept = fcntl(fileno(stream_), F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    original_ = kept < 0 ? nullptr : fdopen(kept, "w");
    if (original_ != nullptr) {
        std::setvbuf(original_, nullptr, _IONBF, 0);
        dup2(file, fileno(stream_));
    } else if (kept >= 0) {
        close(kept);
    }
    close(file);
}

StreamRedirection::~StreamRedirection() {
    if (original_ != nullptr) {
        std::fflush(stream_);
        dup2(fileno(original_), fileno(stream_));
        std::fclose(original_);
    }
}

} // namespace platform
