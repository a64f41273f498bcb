#include "platform/missing_import.h"

#include <cstdint>
#include <windows.h>

namespace platform {

namespace {

/// A library mapped as its loader would place it, without running any of it.
class MappedImage {
  public:
    explicit MappedImage(const std::filesystem::path& library)
        : handle_(LoadLibraryExW(library.c_str(), nullptr, LOAD_LIBRARY_AS_IMAGE_RESOURCE)) {}

    ~MappedImage() {
        if (handle_ != nullptr) {
            FreeLibrary(handle_);
        }
    }

    MappedImage(const MappedImage&) = delete;
    MappedImage& operator=(const MappedImage&) = delete;

    [[nodiscard]] bool isOpen() const { return handle_ != nullptr; }

    template <typename T>
    const T* at(std::size_t offset) const {
        // Such a handle is the address with marks in its lowest bits.
        const auto base = reinterpret_cast<std::uintptr_t>(handle_) & ~std::uintptr_t{3};
        return reinterpret_cast<const T*>(base + offset);
    }

  private:
    HMODULE handle_;
};

bool isFound(const std::filesystem::path& library) {
    const HMODULE handle = LoadLibraryExW(library.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    return handle != nullptr && FreeLibrary(handle) != 0;
}

} // namespace

std::string missingImport(const std::filesystem::path& library) {
    const MappedImage image(library);
    if (!image.isOpen()) {
        return {};
    }
    const auto headers = static_cast<std::size_t>(image.at<IMAGE_DOS_HEADER>(0)->e_lfanew);
    const auto& optional = image.at<IMAGE_NT_HEADERS64>(headers)->OptionalHeader;
    const auto& imports = optional.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (imports.Size == 0) {
        return {};
    }
    const auto* import = image.at<IMAGE_IMPORT_DESCRIPTOR>(imports.VirtualAddress);
    for (; import->Name != 0; ++import) {
        const std::string name = image.at<char>(import->Name);
        if (!isFound(library.parent_path() / name) && !isFound(name)) {
            return " (" + name + " is missing)";
        }
    }
    return {};
}

} // namespace platform
