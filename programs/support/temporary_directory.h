#pragma once

#include "platform/temporary_directory.h"

#include <string_view>

namespace program_support {

/// A new platform::TemporaryDirectory, its name beginning with `prefix`.
///
/// @throws InputError with the remedy when it cannot be made.
platform::TemporaryDirectory makeTemporaryDirectory(std::string_view prefix);

} // namespace program_support
