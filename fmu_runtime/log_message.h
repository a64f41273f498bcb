#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace fmu_runtime {

/// The message of one log line, composed in place: at most 255 characters, the rest is cut off.
class LogMessage {
  public:
    static constexpr std::size_t capacity = 255;

    LogMessage() = default;

    explicit LogMessage(std::string_view text) { add(text); }

    LogMessage& add(std::string_view text) noexcept {
        size_ += text.copy(buffer_.data() + size_, room());
        return *this;
    }

    /// A null text is written as "(null)".
    LogMessage& add(const char* text) noexcept {
        return add(text != nullptr ? std::string_view(text) : std::string_view("(null)"));
    }

    /// In the form "%.16e".
    LogMessage& add(double value) noexcept;
    LogMessage& add(std::int32_t value) noexcept;

    [[nodiscard]] std::string_view text() const { return {buffer_.data(), size_}; }

    [[nodiscard]] std::size_t room() const { return capacity - size_; }

  private:
    std::array<char, capacity> buffer_; // Only the first size_ characters are ever read.
    std::size_t size_ = 0;
};

} // namespace fmu_runtime
