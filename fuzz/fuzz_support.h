#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <string_view>

/// What the fuzz targets share. Each target defines LLVMFuzzerTestOneInput(), which libFuzzer calls
/// with made-up inputs and the replay program with the kept ones.
namespace fuzz {

/// Ends the process with a report unless `condition` holds: what a fuzzer takes for a finding.
inline void require(bool condition, std::string_view rule) {
    if (!condition) {
        std::fprintf(stderr, "Broken rule: %.*s\n", static_cast<int>(rule.size()), rule.data());
        std::abort();
    }
}

/// Takes values from the front of an input; zeros once it is used up.
class Bytes {
  public:
    Bytes(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

    [[nodiscard]] bool empty() const { return rest_.empty(); }

    template <typename Value>
    Value take() {
        Value value{};
        const std::size_t size = std::min(sizeof value, rest_.size());
        if (size > 0) {
            std::memcpy(&value, rest_.data(), size);
        }
        rest_ = rest_.subspan(size);
        return value;
    }

    /// The text up to the next zero byte, or the rest.
    std::string takeText() {
        const std::string_view view(reinterpret_cast<const char*>(rest_.data()), rest_.size());
        std::string text(view.substr(0, view.find('\0')));
        rest_ = rest_.subspan(std::min(text.size() + 1, rest_.size()));
        return text;
    }

    std::string takeRest() {
        std::string text(reinterpret_cast<const char*>(rest_.data()), rest_.size());
        rest_ = {};
        return text;
    }

  private:
    std::span<const std::uint8_t> rest_;
};

inline void writeFile(const std::filesystem::path& path, std::string_view content) {
    std::ofstream(path, std::ios::binary)
        .write(content.data(), static_cast<std::streamsize>(content.size()));
}

/// What the code under test prints would only slow the fuzzer down.
inline void silenceStandardOutput() {
    [[maybe_unused]] static const bool silenced = std::freopen("/dev/null", "w", stdout) != nullptr;
}

} // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
