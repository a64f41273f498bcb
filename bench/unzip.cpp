#include "bench/unzip.h"

#include "platform/files.h"
#include "platform/output_file.h"

#include <minizip/unzip.h>

#include <array>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench {

namespace {

struct CloseArchive {
    void operator()(unzFile archive) const { unzClose(archive); }
};

using Archive = std::unique_ptr<void, CloseArchive>;

bool unzipCurrentFile(unzFile archive, const std::filesystem::path& target) {
    static constexpr unsigned blockSize = 256 * 1024;
    std::vector<char> block(blockSize);
    platform::OutputFile file(platform::narrowPath(target).c_str());
    int size = unzOpenCurrentFile(archive) == UNZ_OK ? 1 : -1;
    while (size > 0 && (size = unzReadCurrentFile(archive, block.data(), blockSize)) > 0) {
        file.write({block.data(), static_cast<std::size_t>(size)});
    }
    return unzCloseCurrentFile(archive) == UNZ_OK && size == 0;
}

bool unzipEntry(unzFile archive, const std::filesystem::path& directory) {
    std::array<char, 1024> name{};
    unzGetCurrentFileInfo64(archive, nullptr, name.data(), name.size(), nullptr, 0, nullptr, 0);
    const auto target = directory / name.data();
    if (!target.has_filename()) {
        std::filesystem::create_directories(target);
        return true;
    }
    std::filesystem::create_directories(target.parent_path());
    return unzipCurrentFile(archive, target);
}

} // namespace

void unzip(const std::filesystem::path& archive, const std::filesystem::path& directory) {
    const std::string path = platform::narrowPath(archive);
    const Archive opened(unzOpen64(path.c_str()));
    int status = opened ? unzGoToFirstFile(opened.get()) : UNZ_ERRNO;
    while (status == UNZ_OK) {
        status = unzipEntry(opened.get(), directory) ? unzGoToNextFile(opened.get()) : UNZ_ERRNO;
    }
    if (status != UNZ_END_OF_LIST_OF_FILE) {
        throw std::runtime_error("Cannot unpack " + path);
    }
}

} // namespace bench
