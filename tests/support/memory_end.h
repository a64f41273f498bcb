#pragma once

#include <cstddef>
#include <string_view>

namespace test_support {

/// Memory that ends with a text: the byte behind it cannot be read.
class MemoryEnd {
  public:
    /// Of at most a page; without a terminating zero unless it has one itself.
    explicit MemoryEnd(std::string_view text);
    ~MemoryEnd();
    MemoryEnd(const MemoryEnd&) = delete;
    MemoryEnd& operator=(const MemoryEnd&) = delete;
    MemoryEnd(MemoryEnd&&) = delete;
    MemoryEnd& operator=(MemoryEnd&&) = delete;

    [[nodiscard]] const char* text() const { return text_; }

  private:
    char* pages_;
    const char* text_;
};

} // namespace test_support
