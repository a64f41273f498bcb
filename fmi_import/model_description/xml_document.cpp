#include "fmi_import/model_description/xml_document.h"

#include "platform/files.h"
#include "platform/path_style.h"

#include <fstream>
#include <system_error>
#include <utility>

namespace fmi_import {

FileText makeText(std::size_t size) {
    FileText text{std::make_unique_for_overwrite<char[]>(size + 1), size};
    text.bytes[size] = '\0';
    return text;
}

std::optional<FileText> readFile(const std::string& path) {
    const auto nativePath = platform::nativePath(path);
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(nativePath, error);
    std::ifstream file(nativePath, std::ios::binary);
    if (error || !file || size > largestModelDescription) {
        return std::nullopt;
    }
    FileText text = makeText(static_cast<std::size_t>(size));
    file.read(text.bytes.get(), static_cast<std::streamsize>(size));
    return file ? std::optional(std::move(text)) : std::nullopt;
}

std::string modelDescriptionPath(std::string_view directory) {
    return std::string(directory) + platform::nativePaths().separator + "modelDescription.xml";
}

} // namespace fmi_import
