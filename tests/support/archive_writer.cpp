#include "support/archive_writer.h"

#include "support/files.h"

#include <minizip/zip.h>

#include <zlib.h>

namespace test_support {

void writeArchive(const std::filesystem::path& file, const std::vector<ArchiveEntry>& entries) {
    zipFile archive = zipOpen64(narrow(file).c_str(), APPEND_STATUS_CREATE);
    for (const ArchiveEntry& entry : entries) {
        zip_fileinfo info{};
        info.external_fa = static_cast<uLong>(entry.unixMode) << 16U;
        zipOpenNewFileInZip64(archive, entry.name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr,
                              entry.isCompressed ? Z_DEFLATED : 0, Z_DEFAULT_COMPRESSION, 0);
        zipWriteInFileInZip(archive, entry.content.data(),
                            static_cast<unsigned>(entry.content.size()));
        zipCloseFileInZip(archive);
    }
    zipClose(archive, nullptr);
}

} // namespace test_support
