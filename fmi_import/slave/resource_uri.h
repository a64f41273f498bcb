#pragma once

#include <filesystem>
#include <string>

namespace fmi_import {

/// The "file:" URI of an absolute path, without a slash at its end. Bytes other than letters,
/// digits and "-_.~/" are written as "%" and two hexadecimal digits of UTF-8.
std::string fileUri(const std::filesystem::path& path);

} // namespace fmi_import
