#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace program_support {

/// The text among `known` that begins with what a user wrote, or else is most like it; empty when
/// none is much like it.
std::string nearestText(std::string_view written, const std::vector<std::string>& known);

} // namespace program_support
