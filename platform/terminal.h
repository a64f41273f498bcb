#pragma once

#include <cstdio>

namespace platform {

/// True when `stream` is a terminal that a person may be looking at.
bool isTerminal(std::FILE* stream);

/// True when paths and the system's messages are UTF-8; on Windows the process's code page tells.
bool narrowTextsAreUtf8();

/// Gives the standard streams that the process was started without to the null device, so that no
/// file which is opened later gets their numbers and what is printed. Reading and writing them
/// fails. To be called before anything is opened.
void holdStandardStreams();

} // namespace platform
