#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// Windows takes "NUL", "nul.txt" and "COM1 .dat" for devices, in every folder.
bool isDeviceName(std::string_view name);

/// Why `name` is no name of a file or folder by itself that every platform takes as it is, such as
/// "it is the name of a device"; nothing when it is one.
std::optional<std::string> plainNameFault(std::string_view name);

/// `text` with the letters a to z in capitals.
std::string inCapitals(std::string_view text);

} // namespace platform
