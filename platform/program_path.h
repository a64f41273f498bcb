#pragma once

#include <string>

namespace platform {

/// Path of the running program's file; empty when the system does not tell.
std::string programPath();

} // namespace platform
