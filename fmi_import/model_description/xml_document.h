#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace fmi_import {

/// The bytes of a file, followed by a zero. The texts of a document that is read from them stay in
/// them.
struct FileText {
    std::unique_ptr<char[]> bytes;
    std::size_t size = 0;

    [[nodiscard]] std::string_view view() const { return {bytes.get(), size}; }
};

/// Room for a text of `size` bytes and its zero.
FileText makeText(std::size_t size);

/// Largest model description that is read, in bytes.
inline constexpr std::uint64_t largestModelDescription = std::uint64_t{1} << 30U;

/// Reads `path` as a whole; nothing when it cannot be read or is larger than a model description
/// may be.
std::optional<FileText> readFile(const std::string& path);

/// `<directory><separator>modelDescription.xml`.
std::string modelDescriptionPath(std::string_view directory);

} // namespace fmi_import
