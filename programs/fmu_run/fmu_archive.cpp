#include "programs/fmu_run/fmu_archive.h"

#include "fmi_import/archive/zip_reader.h"
#include "platform/files.h"
#include "programs/support/input_error.h"

#include <minizip/zip.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string_view>

namespace fmu_run {

using fmi_import::ZipEntry;
using program_support::InputError;

namespace {

constexpr const char* descriptionName = "modelDescription.xml";
constexpr std::uint64_t largestDescription = std::uint64_t{1} << 30U;

/// The platform whose library an entry may be; nothing for every other entry.
std::optional<std::string> platformOf(std::string_view name) {
    constexpr std::string_view folder = "binaries/";
    const auto end = name.starts_with(folder) ? name.find('/', folder.size()) : name.npos;
    if (end == name.npos || end == folder.size() ||
        !isLibraryName(std::string(name.substr(end + 1)))) {
        return std::nullopt;
    }
    return std::string(name.substr(folder.size(), end - folder.size()));
}

struct CloseArchive {
    void operator()(void* archive) const { zipClose(archive, nullptr); }
};

/// Takes the bytes of a model description into an archive of its own.
class DescriptionCopy {
  public:
    explicit DescriptionCopy(const std::filesystem::path& file)
        : archive_(zipOpen64(platform::narrowPath(file).c_str(), APPEND_STATUS_CREATE)) {
        constexpr int stored = 0;
        constexpr int withSizesOf64Bits = 0;
        const zip_fileinfo info{};
        isGood_ = archive_ != nullptr &&
                  zipOpenNewFileInZip64(archive_.get(), descriptionName, &info, nullptr, 0, nullptr,
                                        0, nullptr, stored, 0, withSizesOf64Bits) == ZIP_OK;
    }

    bool take(std::string_view bytes) {
        size_ += bytes.size();
        isGood_ = isGood_ && size_ <= largestDescription &&
                  zipWriteInFileInZip(archive_.get(), bytes.data(),
                                      static_cast<unsigned>(bytes.size())) == ZIP_OK;
        return isGood_;
    }

    /// False when not everything could be kept.
    bool finish() { return isGood_ && zipCloseFileInZip(archive_.get()) == ZIP_OK; }

    [[nodiscard]] bool isTooLarge() const { return size_ > largestDescription; }

  private:
    std::unique_ptr<void, CloseArchive> archive_;
    bool isGood_ = false;
    std::uint64_t size_ = 0;
};

void copyEntry(fmi_import::ZipReader& archive, const ZipEntry& entry,
               const std::filesystem::path& file) {
    DescriptionCopy copy(file);
    const auto header = archive.header(entry);
    const bool isWhole =
        header && header->name == entry.name && archive.openData(entry) &&
        archive.read(entry, [&](std::string_view bytes) { return copy.take(bytes); });
    if (copy.isTooLarge()) {
        throw InputError("its modelDescription.xml has more than 1 GiB; ask the FMU's maker for a "
                         "smaller one");
    }
    if (!isWhole) {
        throw InputError("its modelDescription.xml is damaged; check that the file is complete or "
                         "export it anew");
    }
    if (!copy.finish()) {
        throw InputError("the disk of the temporary directory is full; make room there");
    }
}

} // namespace

bool isLibraryName(const std::string& name) {
    const auto ending = name.substr(name.find_last_of('.') + 1);
    return name.find('/') == std::string::npos &&
           (ending == "so" || ending == "dll" || ending == "dylib");
}

ArchiveContent copyModelDescription(const std::filesystem::path& fmu,
                                    const std::filesystem::path& copy) {
    fmi_import::ZipReader archive(fmu);
    std::set<std::string> platforms;
    std::optional<ZipEntry> description;
    while (const auto entry = archive.isOpen() ? archive.next() : std::nullopt) {
        if (const auto platform = platformOf(entry->name)) {
            platforms.insert(*platform);
        }
        if (entry->name != descriptionName) {
            continue;
        }
        if (description) { // Which one would count depends on who unpacks it.
            throw InputError("it has two modelDescription.xml; export it anew");
        }
        description = entry;
    }
    if (!archive.isOpen() || !archive.isComplete()) {
        return {};
    }
    if (!description) {
        throw InputError("it has no modelDescription.xml; check that it is an FMU");
    }
    copyEntry(archive, *description, copy);
    return {true, {platforms.begin(), platforms.end()}};
}

} // namespace fmu_run
