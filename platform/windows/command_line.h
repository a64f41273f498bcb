#pragma once

#include <string>
#include <vector>

namespace platform {

/// The arguments of a program, itself the first of them, as the one text that Windows passes on, so
/// that the C runtime of the program reads each back as it is.
std::string joinedCommandLine(const std::vector<std::string>& arguments);

} // namespace platform
