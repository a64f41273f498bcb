#include "fmi_import/archive/archive.h"

#include "fmi_import/archive/archive_entry_rules.h"
#include "fmi_import/archive/zip_reader.h"
#include "platform/files.h"
#include "platform/held_directory.h"
#include "platform/path_style.h"

#include <iterator>
#include <map>
#include <stdexcept>
#include <utility>
#include <vector>
#include <zlib.h>

namespace fmi_import {

namespace {

constexpr std::uint16_t stored = 0;
constexpr std::uint16_t deflated = 8;
constexpr const char* damagedHeader = "its header is damaged; get the FMU anew";
constexpr const char* damagedDirectory =
    "The directory of the archive is damaged; get the FMU anew";

/// The text names the entry at fault.
class EntryError : public std::runtime_error {
  public:
    EntryError(const std::string& name, const std::string& reason)
        : std::runtime_error("The archive entry '" + presentableName(name) +
                             "' is refused: " + reason) {}
};

struct Entry {
    std::string name; ///< Relative, with forward slashes; ends in one for a directory.
    ZipEntry packed;
};

/// An FMU may be named without its ".zip".
ZipReader findArchive(const std::string& fileName) {
    ZipReader archive(platform::nativePath(fileName));
    return archive.isOpen() ? std::move(archive)
                            : ZipReader(platform::nativePath(fileName + ".zip"));
}

NameRules nativeNameRules() {
    return platform::nativePaths().separator == '\\' ? NameRules::windows : NameRules::posix;
}

/// Reads the archive's directory and refuses what must not be unpacked.
class Survey {
  public:
    explicit Survey(ZipReader& archive) : archive_(archive) {}

    std::vector<Entry> entries() {
        std::vector<Entry> result;
        while (auto packed = archive_.next()) {
            result.push_back(checked(std::move(*packed)));
            if (result.size() > mostArchiveEntries) {
                throw std::runtime_error("The archive has more than " +
                                         std::to_string(mostArchiveEntries) +
                                         " entries; pack the FMU without what it does not need");
            }
        }
        if (!archive_.isComplete()) {
            throw std::runtime_error(damagedDirectory);
        }
        return result;
    }

  private:
    Entry checked(ZipEntry packed) {
        refuseHarmful(packed);
        addUp(packed);
        checkHeader(packed);
        std::string name = nativeEntryName(nativeNameRules(), packed.name);
        refuseCollision(packed.name, name);
        return {std::move(name), std::move(packed)};
    }

    static void refuseHarmful(const ZipEntry& entry) {
        constexpr unsigned encrypted = 1;
        if (const auto fault = entryNameFault(nativeNameRules(), entry.name)) {
            throw EntryError(entry.name,
                             *fault + "; pack the FMU with plain names below its top folder");
        }
        if (const auto fault = entryKindFault(entry.attributes)) {
            throw EntryError(entry.name, *fault + "; pack the file itself");
        }
        if ((entry.flags & encrypted) != 0) {
            throw EntryError(entry.name, "it is encrypted; pack it without a password");
        }
        if (entry.method != stored && entry.method != deflated) {
            throw EntryError(entry.name, "its compression method " + std::to_string(entry.method) +
                                             " is not supported; pack it by deflate or store it");
        }
    }

    void addUp(const ZipEntry& entry) {
        if (entry.size > unpackedLeft_) {
            throw EntryError(entry.name, "the archive unpacks to more than " +
                                             std::to_string(largestUnpackedSize) +
                                             " bytes; pack the FMU without what it does not need");
        }
        unpackedLeft_ -= entry.size;
    }

    /// Who reads an archive front to back must find the entry that its directory tells of.
    void checkHeader(const ZipEntry& entry) {
        const auto header = archive_.header(entry);
        if (!header) {
            throw EntryError(entry.name, damagedHeader);
        }
        if (withForwardSlashes(header->name) != withForwardSlashes(entry.name)) {
            throw EntryError(entry.name, "the header before its data calls it '" +
                                             presentableName(header->name) + "'; get the FMU anew");
        }
        const std::uint64_t end = archive_.directoryPosition();
        if (header->data > end || entry.packedSize > end - header->data ||
            !claim(header->begin, header->data + entry.packedSize)) {
            throw EntryError(entry.name, "its data overlaps that of other entries or the "
                                         "archive's end; get the FMU anew");
        }
    }

    /// False when a part of the file belongs to an earlier entry: shared data lets a small archive
    /// unpack to any size.
    bool claim(std::uint64_t begin, std::uint64_t end) {
        const auto after = claimed_.lower_bound(begin);
        if ((after != claimed_.end() && after->first < end) ||
            (after != claimed_.begin() && std::prev(after)->second > begin)) {
            return false;
        }
        claimed_.emplace_hint(after, begin, end);
        return true;
    }

    /// Of several entries of one name the last one wins, but names that only this platform takes
    /// for one must not replace each other.
    void refuseCollision(const std::string& packedName, const std::string& name) {
        const bool isChanged = name != withForwardSlashes(packedName);
        const auto [known, isNew] = names_.try_emplace(name, packedName);
        if (!isNew && known->second != packedName && (isChanged || known->second != name)) {
            throw EntryError(packedName, "here it would have the same name as '" +
                                             presentableName(known->second) +
                                             "'; pack only one of them");
        }
    }

    ZipReader& archive_;
    std::uint64_t unpackedLeft_ = largestUnpackedSize;
    std::map<std::uint64_t, std::uint64_t> claimed_; ///< Begin and end of what entries have.
    std::map<std::string, std::string> names_; ///< As they will be here, to as they were packed.
};

std::string cannotBeWritten(const platform::OutputFile& file) {
    return "it cannot be written: " + file.lastError() + "; " + file.remedy();
}

/// Writes entries below one directory and nowhere else.
class Unpacker {
  public:
    Unpacker(ZipReader& archive, platform::HeldDirectory& directory)
        : archive_(archive),
          directory_(directory) {}

    void unpack(const Entry& entry) {
        const std::size_t nameBegin = entry.name.rfind('/') + 1;
        const std::string folder = entry.name.substr(0, nameBegin);
        if (!directory_.enter(folder)) {
            throw EntryError(entry.packed.name, "something is in the way of its folder '" + folder +
                                                    "', which cannot be made; remove it or unpack "
                                                    "elsewhere");
        }
        if (nameBegin < entry.name.size()) {
            unpackFile(entry.packed, entry.name.substr(nameBegin));
        }
    }

  private:
    /// A file that has the content already stays: it may be a library that several instances of
    /// the FMU have loaded. Any other makes room for a new one: what is loaded keeps the old.
    void unpackFile(const ZipEntry& entry, const std::string& name) {
        if (!archive_.openData(entry)) {
            throw EntryError(entry.name, damagedHeader);
        }
        if (holds(entry, name)) {
            return;
        }
        platform::OutputFile file = directory_.create(name);
        if (!file.isOpen()) {
            throw EntryError(entry.name, cannotBeWritten(file));
        }
        bool isWritten = true;
        const bool isIntact = archive_.read(entry, [&](std::string_view piece) {
            isWritten = file.write(piece);
            return isWritten;
        });
        if (!isIntact) {
            file.close();
            directory_.remove(name);
            throw EntryError(entry.name, isWritten ? "its data is damaged; get the FMU anew"
                                                   : cannotBeWritten(file));
        }
    }

    bool holds(const ZipEntry& entry, const std::string& name) {
        std::uint64_t size = 0;
        uLong checksum = crc32(0, nullptr, 0);
        const bool isRead = directory_.read(name, [&](std::string_view piece) {
            checksum = crc32(checksum, reinterpret_cast<const Bytef*>(piece.data()),
                             static_cast<uInt>(piece.size()));
            size += piece.size();
            return size <= entry.size;
        });
        return isRead && size == entry.size && checksum == entry.checksum;
    }

    ZipReader& archive_;
    platform::HeldDirectory& directory_;
};

bool unpackEntries(ZipReader archive, const std::string& directoryName) {
    platform::HeldDirectory directory(directoryName);
    if (!archive.isOpen() || !directory.isOpen()) {
        return false;
    }
    const std::vector<Entry> entries = Survey(archive).entries();
    // That of an earlier FMU must not pass for that of an archive that has none.
    directory.remove("modelDescription.xml");
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
