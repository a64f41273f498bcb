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
    const int kept = _dup(_fileno(stream_));
    original_ = kept < 0 ? nullptr : _fdopen(kept, "w");
    if (original_ != nullptr) {
        std::setvbuf(original_, nullptr, _IONBF, 0);
        _dup2(file, _fileno(stream_));
    } else if (kept >= 0) {
        _close(kept);
    }
    _close(file);
}

StreamRedirection::~StreamRedirection() {
    if (original_ != nullptr) {
        std::fflush(stream_);
        _dup2(_fileno(original_), _fileno(stream_));
        std::fclose(original_);
    }
}

} // namespace platform
