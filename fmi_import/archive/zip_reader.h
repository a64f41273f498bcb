#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace fmi_import {

/// An entry as the archive's directory has it.
struct ZipEntry {
    std::string name; ///< As packed: any bytes.
    std::uint16_t flags = 0;
    std::uint16_t method = 0; ///< 0: stored, 8: deflated.
    std::uint32_t checksum = 0;
    std::uint64_t packedSize = 0;
    std::uint64_t size = 0;
    std::uint32_t attributes = 0; ///< The Unix mode in the upper half.
    std::uint64_t position = 0;   ///< Of its header in the file.
};

/// What stands before an entry's data: a part of what the directory says, once more.
struct ZipHeader {
    std::string name;        ///< As packed.
    std::uint64_t begin = 0; ///< Position in the file.
    std::uint64_t data = 0;  ///< Position of the data.
};

/// Reads ZIP archives, those with 64-bit sizes (Zip64) included.
///
/// The library for archives that systems offer (minizip 1.1) gets 64-bit sizes wrong where C's long
/// has 64 bits. Everything that the archive says is checked: offsets lie in the file, the data of an
/// entry ends where the directory says and has its checksum.
class ZipReader {
  public:
    /// Opens `file` and looks for its directory.
    explicit ZipReader(const std::filesystem::path& file);

    /// False when there is no such file or it has no directory of an archive.
    [[nodiscard]] bool isOpen() const { return isOpen_; }

    /// The next entry of the directory; nothing behind the last one and where the directory is
    /// damaged.
    std::optional<ZipEntry> next();

    /// True when next() has answered every entry of the directory, whose size tells their number:
    /// the one that is told has 16 bits, and packers let it overflow.
    [[nodiscard]] bool isComplete() const { return at_ == directory_.size(); }

    /// Reads the header before the data of `entry`; nothing when there is none for that entry.
    std::optional<ZipHeader> header(const ZipEntry& entry);

    /// Position of the archive's directory: all data is before it.
    [[nodiscard]] std::uint64_t directoryPosition() const { return directoryPosition_; }

    /// Goes to the data of `entry`, stored or deflated; false when there is none.
    bool openData(const ZipEntry& entry);

    /// Hands the data of `entry` to `sink`, piece by piece, until that answers false. False when
    /// the data is damaged: it is not as long as told or its checksum differs.
    bool read(const ZipEntry& entry, const std::function<bool(std::string_view)>& sink);

  private:
    struct Directory {
        std::uint64_t size;
        std::uint64_t offset;
        std::uint64_t end; ///< Position of what follows the directory.
    };

    std::string bytesAt(std::uint64_t position, std::uint64_t count);
    std::optional<Directory> findDirectory();
    std::optional<Directory> findZip64Directory(std::uint64_t end);

    std::ifstream file_;
    std::uint64_t size_ = 0;
    std::uint64_t prefix_ = 0; ///< Bytes before the archive, as a self-extracting one has.
    bool isOpen_ = false;
    std::string directory_;
    std::uint64_t directoryPosition_ = 0;
    std::size_t at_ = 0; ///< In the directory.
};

} // namespace fmi_import
