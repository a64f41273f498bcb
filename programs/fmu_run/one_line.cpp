#include "programs/fmu_run/one_line.h"

#include <algorithm>
#include <cstdint>

namespace fmu_run {

namespace {

bool begins(char character) {
    return (static_cast<std::uint8_t>(character) & 0xC0) != 0x80;
}

} // namespace

std::size_t widthOf(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins));
}

std::string onOneLine(std::string_view text, std::size_t width) {
    constexpr std::string_view cut = "...";
    std::string line;
    std::size_t length = 0;
    std::size_t end = 0; // Where the cut would follow.
    for (const char character : text) {
        if (begins(character) && length++ == width) {
            return line.substr(0, end) + std::string(cut);
        }
        line += character == '\n' || character == '\t' || character == '\r' ? ' ' : character;
        end = length <= width - cut.size() ? line.size() : end;
    }
    return line;
}

} // namespace fmu_run
