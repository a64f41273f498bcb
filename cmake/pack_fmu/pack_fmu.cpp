// Packs files into an FMU: pack_fmu ARCHIVE DIRECTORY FILE..., the files relative to the directory.
// Of a file's times and owner nothing is kept, as archivers would, so that an FMU is the same bytes
// whenever and by whomever it is packed.
#include <minizip/zip.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <zlib.h>

namespace {

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (!stream.is_open() || stream.bad()) {
        throw std::runtime_error("cannot read " + file.string());
    }
    return content;
}

void require(int result, const char* name) {
    if (result != ZIP_OK) {
        throw std::runtime_error(std::string("cannot pack ") + name);
    }
}

void pack(zipFile archive, const char* name, const std::string& content) {
    zip_fileinfo info{};
    info.tmz_date = {0, 0, 0, 1, 0, 2000}; // The first of January; an archive needs a day.
    info.external_fa = 0100644UL << 16U;   // A plain file that everybody may read.
    require(zipOpenNewFileInZip(archive, name, &info, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED,
                                Z_DEFAULT_COMPRESSION),
            name);
    require(zipWriteInFileInZip(archive, content.data(), static_cast<unsigned>(content.size())),
            name);
    require(zipCloseFileInZip(archive), name);
}

void packAll(int argc, char** argv) {
    if (argc < 4) {
        throw std::runtime_error("usage: pack_fmu ARCHIVE DIRECTORY FILE...");
    }
    zipFile archive = zipOpen(argv[1], APPEND_STATUS_CREATE);
    if (archive == nullptr) {
        throw std::runtime_error(std::string("cannot write ") + argv[1]);
    }
    for (int i = 3; i < argc; ++i) {
        pack(archive, argv[i], contentOf(std::filesystem::path(argv[2]) / argv[i]));
    }
    require(zipClose(archive, nullptr), argv[1]);
}

} // namespace

int main(int argc, char** argv) {
    try {
        packAll(argc, argv);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "pack_fmu: %s\n", error.what());
        return 1;
    }
}
