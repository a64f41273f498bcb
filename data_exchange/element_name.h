#pragma once

#include <array>
#include <cstddef>
#include <memory_resource>
#include <string>
#include <string_view>

namespace data_exchange {

/// Number of elements of every vector that crosses between host and FMU, whatever its quantity
/// says.
inline constexpr int vectorSize = 3;

/// Names of a vector's elements: "F[1]", "F[2]", "F[3]" (structured naming, FMI 2.0 section 2.2.9).
/// Formed without the heap for names of any usual length, because every step forms them all.
class ElementName {
  public:
    explicit ElementName(std::string_view vector) {
        text_.reserve(vector.size() + 3);
        text_.append(vector).append("[1]");
    }

    /// Name of the element fed from `component`, 0 to vectorSize - 1; valid until the next call.
    const char* of(int component) {
        text_[text_.size() - 2] = static_cast<char>('1' + component);
        return text_.c_str();
    }

  private:
    std::array<std::byte, 256> buffer_{};
    std::pmr::monotonic_buffer_resource memory_{buffer_.data(), buffer_.size()};
    std::pmr::string text_{&memory_};
};

} // namespace data_exchange
