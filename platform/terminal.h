#pragma once

#include <cstdio>

namespace platform {

/// True when `stream` is a terminal that a person may be looking at.
bool isTerminal(std::FILE* stream);

} // namespace platform
