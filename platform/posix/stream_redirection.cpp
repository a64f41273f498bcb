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
    original_ = fcntl(fileno(stream_), F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    writer_ = original_ < 0 ? nullptr : fdopen(original_, "w");
    if (writer_ != nullptr) {
        std::setvbuf(writer_, nullptr, _IONBF, 0);
    }
    dup2(file, fileno(stream_));
    close(file);
}

StreamRedirection::~StreamRedirection() {
    if (original_ < 0) {
        return;
    }
    std::fflush(stream_);
    dup2(original_, fileno(stream_));
    if (writer_ != nullptr) {
        std::fclose(writer_);
    } else {
        close(original_);
    }
}

} // namespace platform
