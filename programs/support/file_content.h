#pragma once

#include <string>

namespace program_support {

/// The bytes of a file that the user gave.
///
/// @throws InputError when it cannot be read.
std::string fileContent(const std::string& path);

} // namespace program_support
