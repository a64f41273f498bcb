#pragma once

#include "fmu_runtime/log_message.h"

#include <cstdarg>
#include <string_view>

namespace fmu_runtime {

/// Formats a message of foreign code with its arguments as C printf does, without trusting either:
/// "%n" writes nothing, a "%s" that does not point at readable memory becomes "(unreadable)", and
/// widths beyond any use are reduced. A directive that is unknown or cannot be honoured comes out
/// as it stands. The result is cut to what a LogMessage holds.
LogMessage formatForeignMessage(const char* format, std::va_list arguments) noexcept;

/// What is left of a text that is taken for a format without arguments: "%%" becomes "%", and any
/// other directive comes out as it stands.
LogMessage withoutDoubledPercents(std::string_view text) noexcept;

} // namespace fmu_runtime
