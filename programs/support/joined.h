#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace program_support {

/// The texts one after the other with `separator` in between.
std::string joined(const std::vector<std::string>& texts, std::string_view separator);

} // namespace program_support
