#pragma once

#include "host/logger.h"

#include <functional>
#include <string>

namespace reference_host {

/// Receives the lines of the host's log; the text carries no line end.
using LogSink = std::function<void(Logger::Level level, const std::string& text)>;

/// Sends the host's log to `sink` from now on; an empty one sends it to standard output again,
/// which is where it goes at first.
void setLogSink(LogSink sink);

} // namespace reference_host
