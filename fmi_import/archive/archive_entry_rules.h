#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Which entries an FMU archive may have. Pure rules about names and attributes: whoever packed the
/// archive must not decide where on this machine something is written.
namespace fmi_import {

/// Longest name of an entry, in bytes.
inline constexpr std::size_t longestEntryName = 255;

/// Whose file system the names must be harmless for.
enum class NameRules { posix, windows };

/// Why an entry of this name must not be unpacked; nothing when it may be.
std::optional<std::string> entryNameFault(NameRules rules, std::string_view name);

/// The name that an entry gets here, with forward slashes: Windows drops dots and blanks at the end
/// of each part.
std::string nativeEntryName(NameRules rules, std::string_view name);

/// Why an entry with these file attributes (the Unix mode in the upper half) must not be unpacked:
/// links, devices and the like. Nothing when it may be.
std::optional<std::string> entryKindFault(std::uint32_t externalAttributes);

/// `name` with every "\" written as "/".
std::string withForwardSlashes(std::string_view name);

/// `name` as it can be shown in a message: cut to the longest name, control characters as "?".
std::string presentableName(std::string_view name);

} // namespace fmi_import
