/// FMU archives, damaged ones and well-formed ones with wild entries: nothing is ever written
/// outside the directory that they are unpacked into, and no link inside it.
#include "fuzz/fmi_library.h"
#include "platform/temporary_directory.h"

#include <minizip/zip.h>

#include <string>

namespace {

namespace fs = std::filesystem;

void packWildEntries(const fs::path& archive, fuzz::Bytes& bytes) {
    zipFile zip = zipOpen(archive.c_str(), APPEND_STATUS_CREATE);
    while (!bytes.empty()) {
        zip_fileinfo information{};
        information.external_fa = static_cast<uLong>(bytes.take<std::uint16_t>()) << 16U;
        const int level = bytes.take<std::uint8_t>() % 10;
        const std::string name = bytes.takeText();
        const std::string content = bytes.takeText();
        zipOpenNewFileInZip(zip, name.c_str(), &information, nullptr, 0, nullptr, 0, nullptr,
                            level > 0 ? Z_DEFLATED : 0, level);
        zipWriteInFileInZip(zip, content.data(), static_cast<unsigned>(content.size()));
        zipCloseFileInZip(zip);
    }
    zipClose(zip, nullptr);
}

std::size_t entriesIn(const fs::path& directory) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(directory), fs::directory_iterator()));
}

void checkUnpacked(const fs::path& directory) {
    for (const auto& entry : fs::recursive_directory_iterator(directory)) {
        const bool harmless =
            entry.path().filename() == "link" ||
            (!entry.is_symlink() && (entry.is_regular_file() || entry.is_directory()));
        fuzz::require(harmless, "only files and folders are unpacked");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const platform::TemporaryDirectory scratch("fuzz_");
    const auto archive = scratch / "archive.fmu";
    const auto outside = scratch / "outside";
    const auto unpacked = scratch / "middle/unpacked";
    fs::create_directories(outside);
    fs::create_directories(unpacked);
    // What an earlier FMU or somebody else may have left there.
    fs::create_directory_symlink(outside, unpacked / "link");

    fuzz::Bytes bytes(data, size);
    if (size > 0 && data[0] == 'P') { // As every archive begins.
        fuzz::writeFile(archive, bytes.takeRest());
    } else {
        packWildEntries(archive, bytes);
    }
    const fuzz::Context context = fuzz::silentContext();
    static_cast<void>(fmi_import_get_fmi_version(context.get(), archive.c_str(), unpacked.c_str()));

    checkUnpacked(unpacked);
    fuzz::require(entriesIn(outside) == 0 && entriesIn(scratch / "middle") == 1 &&
                      entriesIn(scratch / "") == 3,
                  "nothing is written outside");
    fs::remove_all(scratch / "middle");
    return 0;
}
