#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace test_support {

/// An entry as it is put into an archive, however harmful.
struct ArchiveEntry {
    std::string name;
    std::string content;
    bool isCompressed = true;
    unsigned unixMode = 0; ///< File type and permissions; 0: none told.
};

/// Writes an archive with these entries in this order, their names untouched.
void writeArchive(const std::filesystem::path& file, const std::vector<ArchiveEntry>& entries);

} // namespace test_support
