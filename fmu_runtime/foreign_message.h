#pragma once

#include "fmu_runtime/log_message.h"
#include "platform/foreign_text.h"

#include <array>
#include <cstdarg>
#include <cstddef>
#include <string_view>

namespace fmu_runtime {

/// A copy of a text that foreign code handed over, at most `capacity` characters of it: "(null)"
/// for a null pointer, "(unreadable)" for one that does not lead to a text.
template <std::size_t capacity>
class ForeignText {
  public:
    explicit ForeignText(const char* foreign) noexcept {
        const auto size =
            foreign != nullptr ? platform::copyForeignText(foreign, copy_.data(), capacity) : 0;
        copy_[static_cast<std::size_t>(size < 0 ? 0 : size)] = '\0';
        text_ = foreign == nullptr ? "(null)" : size < 0 ? "(unreadable)" : copy_.data();
    }

    ~ForeignText() = default;
    ForeignText(const ForeignText&) = delete;
    ForeignText& operator=(const ForeignText&) = delete;

    [[nodiscard]] const char* text() const { return text_; }

  private:
    std::array<char, capacity + 1> copy_; // Only what was copied is ever read.
    const char* text_ = nullptr;
};

/// Formats a message of foreign code with its arguments as C printf does in the C locale, without
/// trusting either: a format that cannot be read becomes "(unreadable)", and so does a "%s" that
/// does not point at readable memory; "%n" writes nothing, and widths beyond any use are reduced. A
/// "%c" of 0 ends the message. What the Windows C library knows beyond the standard ("%I64d",
/// "%Iu", "%hs", "%S") takes its arguments everywhere. A directive that is unknown or cannot be
/// honoured comes out as it stands. The result is cut to what a LogMessage holds.
LogMessage formatForeignMessage(const char* format, std::va_list arguments) noexcept;

/// What is left of a text that is taken for a format without arguments: "%%" becomes "%", and any
/// other directive comes out as it stands.
LogMessage withoutDoubledPercents(std::string_view text) noexcept;

} // namespace fmu_runtime
