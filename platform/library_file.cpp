#include "platform/library_file.h"

#include <algorithm>
#include <cstdint>

namespace platform {

namespace {

constexpr std::size_t mostImports = 1000;
constexpr std::size_t longestImport = 260;

/// The `count` bytes at `offset`; empty when the file does not have all of them.
std::string_view bytesAt(std::string_view file, std::uint64_t offset, std::uint64_t count) {
    const bool isInside = offset <= file.size() && count <= file.size() - offset;
    return isInside ? file.substr(static_cast<std::size_t>(offset), static_cast<std::size_t>(count))
                    : std::string_view();
}

/// A little-endian number; zero where the file has no such bytes.
template <typename Number>
Number numberAt(std::string_view file, std::uint64_t offset) {
    std::uint64_t number = 0;
    unsigned shift = 0;
    for (const char byte : bytesAt(file, offset, sizeof(Number))) {
        number |= static_cast<std::uint64_t>(static_cast<unsigned char>(byte)) << shift;
        shift += 8;
    }
    return static_cast<Number>(number);
}

/// A Windows library's headers and sections.
class WindowsLibrary {
  public:
    explicit WindowsLibrary(std::string_view file)
        : file_(file),
          headers_(numberAt<std::uint32_t>(file, 0x3C)) {}

    [[nodiscard]] std::vector<std::string> imports() const {
        constexpr std::uint16_t pe32Plus = 0x20B;
        constexpr std::uint64_t importEntry = 120;
        constexpr std::uint64_t descriptorSize = 20;
        std::vector<std::string> names;
        if (bytesAt(file_, headers_, 4) != std::string_view("PE\0\0", 4) ||
            numberAt<std::uint16_t>(file_, optionalHeader()) != pe32Plus) {
            return names;
        }
        const auto table = numberAt<std::uint32_t>(file_, optionalHeader() + importEntry);
        for (std::uint64_t at = fileOffset(table); names.size() < mostImports;
             at += descriptorSize) {
            const auto name = numberAt<std::uint32_t>(file_, at + 12);
            if (name == 0) {
                break;
            }
            names.push_back(textAt(fileOffset(name)));
        }
        return names;
    }

  private:
    [[nodiscard]] std::uint64_t optionalHeader() const { return headers_ + 24; }

    /// Where in the file the byte is that the loader would put at `address`; behind the file's end
    /// when it is in no section.
    [[nodiscard]] std::uint64_t fileOffset(std::uint32_t address) const {
        constexpr std::uint64_t sectionSize = 40;
        const auto count = numberAt<std::uint16_t>(file_, headers_ + 6);
        std::uint64_t section = optionalHeader() + numberAt<std::uint16_t>(file_, headers_ + 20);
        for (std::uint16_t at = 0; at < count; ++at, section += sectionSize) {
            const auto begin = numberAt<std::uint32_t>(file_, section + 12);
            const auto size = numberAt<std::uint32_t>(file_, section + 16);
            if (address >= begin && address - begin < size) {
                return std::uint64_t{numberAt<std::uint32_t>(file_, section + 20)} + address -
                       begin;
            }
        }
        return file_.size();
    }

    [[nodiscard]] std::string textAt(std::uint64_t offset) const {
        const auto begin = static_cast<std::size_t>(std::min<std::uint64_t>(offset, file_.size()));
        const std::string_view text = file_.substr(begin, longestImport);
        return std::string(text.substr(0, text.find('\0')));
    }

    std::string_view file_;
    std::uint64_t headers_;
};

constexpr std::uint64_t programHeaderSize = 56;

/// What the loader takes from a program header.
struct Segment {
    std::uint32_t type;
    std::uint64_t offset;
    std::uint64_t address;
    std::uint64_t fileSize;
    std::uint64_t memorySize;
};

Segment segmentAt(std::string_view file, std::uint64_t at) {
    return {numberAt<std::uint32_t>(file, at), numberAt<std::uint64_t>(file, at + 8),
            numberAt<std::uint64_t>(file, at + 16), numberAt<std::uint64_t>(file, at + 32),
            numberAt<std::uint64_t>(file, at + 40)};
}

bool isInside(const Segment& inner, const Segment& outer) {
    return inner.address >= outer.address && inner.address - outer.address <= outer.memorySize &&
           inner.memorySize <= outer.memorySize - (inner.address - outer.address);
}

} // namespace

std::vector<std::string> importsOfWindowsLibrary(std::string_view file) {
    return WindowsLibrary(file).imports();
}

std::optional<std::string> faultOfLinuxLibrary(std::string_view file) {
    constexpr std::uint32_t load = 1;
    constexpr std::uint32_t dynamic = 2;
    if (!file.starts_with("\x7F"
                          "ELF")) {
        return std::nullopt;
    }
    const auto headers = numberAt<std::uint64_t>(file, 32);
    const auto count = numberAt<std::uint16_t>(file, 56);
    if (numberAt<std::uint16_t>(file, 54) != programHeaderSize || count == 0 ||
        bytesAt(file, headers, count * programHeaderSize).empty()) {
        return "its program headers are damaged";
    }
    std::vector<Segment> loaded;
    std::vector<Segment> dynamics;
    for (std::uint16_t at = 0; at < count; ++at) {
        const Segment segment = segmentAt(file, headers + at * programHeaderSize);
        if (segment.type != load && segment.type != dynamic) {
            continue;
        }
        if (segment.offset > file.size() || segment.fileSize > file.size() - segment.offset ||
            segment.memorySize < segment.fileSize) {
            return "a part of it lies behind its end: it has been cut off";
        }
        (segment.type == load ? loaded : dynamics).push_back(segment);
    }
    const bool isSound = std::ranges::all_of(dynamics, [&](const Segment& segment) {
        return std::ranges::any_of(loaded,
                                   [&](const Segment& outer) { return isInside(segment, outer); });
    });
    return isSound ? std::nullopt : std::optional<std::string>("its dynamic section is damaged");
}

} // namespace platform
