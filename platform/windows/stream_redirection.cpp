#include "platform/stream_redirection.h"

#include "platform/files.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace platform {

StreamRedirection::StreamRedirection(std::FILE* stream, const std::string& path) : stream_(stream) {
    const int file =
        _wopen(nativePath(path).c_str(),
               _O_WRONLY | _O_CREAT | _O_APPEND | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
    if (file < 0) {
        return;
    }
    std::fflush(stream_);
    original_ = _dup(_fileno(stream_));
    writer_ = original_ < 0 ? nullptr : _fdopen(original_, "w");
    if (writer_ != nullptr) {
        std::setvbuf(writer_, nullptr, _IONBF, 0);
    }
    _dup2(file, _fileno(stream_));
    _close(file);
}

StreamRedirection::~StreamRedirection() {
    if (original_ < 0) {
        return;
    }
    std::fflush(stream_);
    _dup2(original_, _fileno(stream_));
    if (writer_ != nullptr) {
        std::fclose(writer_);
    } else {
        _close(original_);
    }
}

} // namespace platform
