#include "fmi_import/archive.h"

#include "fmi_import/archive_entry_rules.h"
#include "platform/files.h"
#include "platform/output_file.h"
#include "platform/path_style.h"

#include <minizip/unzip.h>

#include <fstream>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <vector>
#include <zlib.h>

namespace fmi_import {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t blockSize = std::size_t{256} * 1024;

/// The text names the entry at fault.
class EntryError : public std::runtime_error {
  public:
    EntryError(const std::string& name, const std::string& reason)
        : std::runtime_error("The archive entry '" + presentableName(name) +
                             "' is refused: " + reason) {}
};

struct CloseArchive {
    void operator()(unzFile archive) const { unzClose(archive); }
};

struct Archive {
    std::unique_ptr<void, CloseArchive> handle;
    std::uint64_t size = 0; ///< Bytes of the archive itself.
};

struct Entry {
    std::string name; ///< Relative, with forward slashes; ends in one for a directory.
    std::uint64_t size;
    std::uint32_t checksum;
    unz64_file_pos position;
};

Archive openArchive(const std::string& fileName) {
    std::error_code error;
    return {std::unique_ptr<void, CloseArchive>(unzOpen64(fileName.c_str())),
            fs::file_size(platform::nativePath(fileName), error)};
}

/// An FMU may be named without its ".zip".
Archive findArchive(const std::string& fileName) {
    Archive archive = openArchive(fileName);
    return archive.handle ? std::move(archive) : openArchive(fileName + ".zip");
}

NameRules nativeNameRules() {
    return platform::nativePaths().separator == '\\' ? NameRules::windows : NameRules::posix;
}

/// Reads the archive's directory and refuses what must not be unpacked.
class Survey {
  public:
    explicit Survey(const Archive& archive)
        : archive_(archive.handle.get()),
          packedLeft_(archive.size) {}

    std::vector<Entry> entries() {
        unz_global_info64 global{};
        unzGetGlobalInfo64(archive_, &global);
        if (global.number_entry == 0) {
            return {};
        }
        std::vector<Entry> result;
        int status = unzGoToFirstFile(archive_);
        for (; status == UNZ_OK; status = unzGoToNextFile(archive_)) {
            result.push_back(currentEntry());
            if (result.size() > mostArchiveEntries) {
                throw std::runtime_error("The archive has more than " +
                                         std::to_string(mostArchiveEntries) +
                                         " entries; pack the FMU without what it does not need");
            }
        }
        if (status != UNZ_END_OF_LIST_OF_FILE) {
            throw std::runtime_error("The directory of the archive is damaged; get the FMU anew");
        }
        return result;
    }

  private:
    Entry currentEntry() {
        unz_file_info64 info{};
        std::string name(longestEntryName + 1, '\0');
        if (unzGetCurrentFileInfo64(archive_, &info, name.data(), static_cast<uLong>(name.size()),
                                    nullptr, 0, nullptr, 0) != UNZ_OK) {
            throw std::runtime_error("The directory of the archive is damaged; get the FMU anew");
        }
        name.resize(std::min<std::size_t>(info.size_filename, name.size()));
        refuseHarmful(name, info);
        addUp(name, info);
        Entry entry{withForwardSlashes(name),
                    info.uncompressed_size,
                    static_cast<std::uint32_t>(info.crc),
                    {}};
        unzGetFilePos64(archive_, &entry.position);
        return entry;
    }

    static void refuseHarmful(const std::string& name, const unz_file_info64& info) {
        constexpr uLong encrypted = 1;
        if (const auto fault = entryNameFault(nativeNameRules(), name)) {
            throw EntryError(name, *fault + "; pack the FMU with plain names below its top folder");
        }
        if (const auto fault = entryKindFault(static_cast<std::uint32_t>(info.external_fa))) {
            throw EntryError(name, *fault + "; pack the file itself");
        }
        if ((info.flag & encrypted) != 0) {
            throw EntryError(name, "it is encrypted; pack it without a password");
        }
        if (info.compression_method != 0 && info.compression_method != Z_DEFLATED) {
            throw EntryError(name, "its compression method " +
                                       std::to_string(info.compression_method) +
                                       " is not supported; pack it by deflate or store it");
        }
    }

    void addUp(const std::string& name, const unz_file_info64& info) {
        if (info.compressed_size > packedLeft_) {
            throw EntryError(
                name,
                "its data overlaps that of other entries or the archive's end; get the FMU anew");
        }
        if (info.uncompressed_size > unpackedLeft_) {
            throw EntryError(name, "the archive unpacks to more than " +
                                       std::to_string(largestUnpackedSize) +
                                       " bytes; pack the FMU without what it does not need");
        }
        packedLeft_ -= info.compressed_size;
        unpackedLeft_ -= info.uncompressed_size;
    }

    unzFile archive_;
    std::uint64_t packedLeft_;
    std::uint64_t unpackedLeft_ = largestUnpackedSize;
};

std::string cannotBeWritten(const std::string& reason) {
    return "it cannot be written: " + reason + "; make room and see that its folder may be written";
}

/// Writes entries below one directory and nowhere else.
class Unpacker {
  public:
    Unpacker(const Archive& archive, const std::string& directory)
        : archive_(archive.handle.get()),
          directory_(platform::withTrailingSeparator(platform::nativePaths(), directory)),
          block_(std::make_unique<char[]>(blockSize)) {}

    void unpack(const Entry& entry) {
        const auto slash = entry.name.rfind('/');
        if (slash != std::string::npos) {
            makeFolder(entry, entry.name.substr(0, slash));
        }
        if (slash != entry.name.size() - 1) {
            unpackFile(entry);
        }
    }

  private:
    /// Goes down one folder at a time: a link that is there already could lead anywhere.
    void makeFolder(const Entry& entry, const std::string& folder) {
        if (folder == lastFolder_) {
            return;
        }
        fs::path path = platform::nativePath(directory_);
        for (const auto& component : platform::nativePath(folder)) {
            path /= component;
            std::error_code error;
            fs::create_directory(path, error);
            if (!fs::is_directory(fs::symlink_status(path, error))) {
                throw EntryError(entry.name,
                                 "'" + platform::narrowPath(path) +
                                     "' is in the way or cannot be made a folder; remove it or "
                                     "unpack elsewhere");
            }
        }
        lastFolder_ = folder;
    }

    void unpackFile(const Entry& entry) {
        unz64_file_pos position = entry.position;
        if (unzGoToFilePos64(archive_, &position) != UNZ_OK ||
            unzOpenCurrentFile(archive_) != UNZ_OK) {
            throw EntryError(entry.name, "its header is damaged; get the FMU anew");
        }
        const std::string path = directory_ + entry.name;
        // Replaced, not overwritten: the old file may be a link, or a library that is loaded.
        std::error_code error;
        fs::remove(platform::nativePath(path), error);
        platform::OutputFile file(path.c_str());
        if (!file.isOpen()) {
            acceptIfUnchanged(entry, path, file.lastError());
        } else if (const auto fault = copyTo(file, entry.size)) {
            file.close();
            fs::remove(platform::nativePath(path), error);
            throw EntryError(entry.name, *fault);
        }
    }

    std::optional<std::string> copyTo(platform::OutputFile& file, std::uint64_t size) {
        int length = 0;
        while ((length = unzReadCurrentFile(archive_, block_.get(), blockSize)) > 0) {
            if (!file.write({block_.get(), static_cast<std::size_t>(length)})) {
                return cannotBeWritten(file.lastError());
            }
            size -= static_cast<std::uint64_t>(length);
        }
        // The checksum is compared on closing, and only of an entry that was read to its end.
        const bool intact = unzCloseCurrentFile(archive_) == UNZ_OK;
        if (length < 0 || size != 0 || !intact) {
            return "its data is damaged; get the FMU anew";
        }
        return std::nullopt;
    }

    /// Windows does not let go of a library that is loaded: several instances of one FMU may share
    /// a directory as long as its files stay the same.
    void acceptIfUnchanged(const Entry& entry, const std::string& path, const std::string& reason) {
        if (!holds(path, entry)) {
            throw EntryError(entry.name, cannotBeWritten(reason));
        }
    }

    bool holds(const std::string& path, const Entry& entry) {
        std::ifstream file(platform::nativePath(path), std::ios::binary);
        std::uint64_t size = 0;
        uLong checksum = crc32(0, nullptr, 0);
        while (file.read(block_.get(), blockSize) || file.gcount() > 0) {
            const auto length = static_cast<uInt>(file.gcount());
            checksum = crc32(checksum, reinterpret_cast<const Bytef*>(block_.get()), length);
            size += length;
        }
        return size == entry.size && checksum == entry.checksum;
    }

    unzFile archive_;
    std::string directory_;
    std::string lastFolder_;
    std::unique_ptr<char[]> block_;
};

/// A model description of an earlier FMU must not pass for that of an archive that has none.
void removeStaleModelDescription(const std::string& directory) {
    std::error_code error;
    fs::remove(platform::nativePath(directory) / "modelDescription.xml", error);
}

bool unpackEntries(const Archive& archive, const std::string& directory) {
    std::error_code error;
    if (!archive.handle || !fs::is_directory(platform::nativePath(directory), error)) {
        return false;
    }
    const std::vector<Entry> entries = Survey(archive).entries();
    removeStaleModelDescription(directory);
    Unpacker unpacker(archive, directory);
    for (const Entry& entry : entries) {
        unpacker.unpack(entry);
    }
    return true;
}

} // namespace

bool unpackArchive(const Log& log, const std::string& fileName, const std::string& directory) {
    log.verbose(module::archive, {"Unpacking FMU into ", directory});
    bool unpacked = false;
    try {
        unpacked = unpackEntries(findArchive(fileName), directory);
    } catch (const std::runtime_error& error) {
        log.fatal(module::archive, {error.what()});
    }
    if (!unpacked) {
        log.fatal(module::archive, {"Unpacking of FMU ", fileName, " into ", directory, " failed"});
    }
    return unpacked;
}

} // namespace fmi_import
