/// Messages of an FMU: any format with any arguments survives, and a well-formed one comes out as
/// printf writes it.
#include "fmu_runtime/foreign_message.h"

#include "fuzz/fuzz_support.h"

#include <array>
#include <utility>

namespace {

using fmu_runtime::LogMessage;

LogMessage format(const char* text, ...) {
    std::va_list arguments;
    va_start(arguments, text);
    LogMessage message = fmu_runtime::formatForeignMessage(text, arguments);
    va_end(arguments);
    return message;
}

constexpr std::size_t longestWildFormat = 120;
constexpr std::size_t argumentCount = 128; // More than a format of that length can ask for.
using Arguments = std::array<std::uint64_t, argumentCount>;

template <std::size_t... Index>
LogMessage formatWild(const std::string& text, const Arguments& arguments,
                      std::index_sequence<Index...> /*all*/) {
    return format(text.c_str(), arguments[Index]...);
}

void tryWildFormat(fuzz::Bytes& bytes) {
    Arguments arguments{};
    const auto seed = bytes.take<std::uint64_t>();
    static const char text[] = "%s of an FMU";
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const bool readable = ((seed >> (index % 64)) & 1U) != 0;
        arguments[index] = readable ? reinterpret_cast<std::uintptr_t>(text) : seed * index;
    }
    const LogMessage first = formatWild(bytes.takeText().substr(0, longestWildFormat), arguments,
                                        std::make_index_sequence<argumentCount>());
    const LogMessage second = fmu_runtime::withoutDoubledPercents(first.text());
    fuzz::require(second.text().size() <= first.text().size(), "the second pass adds nothing");
}

/// Takes a directive without its conversion: flags, width and precision.
std::string takeDirective(fuzz::Bytes& bytes) {
    std::string directive = "%";
    const auto flags = bytes.take<std::uint8_t>();
    constexpr std::string_view flagCharacters = "-+ #0";
    for (std::size_t index = 0; index < flagCharacters.size(); ++index) {
        if (((flags >> index) & 1U) != 0) {
            directive += flagCharacters[index];
        }
    }
    const auto width = bytes.take<std::uint16_t>() % 400;
    const auto precision = bytes.take<std::uint16_t>() % 400;
    directive += width > 0 ? std::to_string(width) : "";
    return directive + (precision > 0 ? '.' + std::to_string(precision) : "");
}

template <typename Value>
void compare(const std::string& text, Value value) {
    std::array<char, LogMessage::capacity + 1> expected;
    std::snprintf(expected.data(), expected.size(), text.c_str(), value);
    fuzz::require(format(text.c_str(), value).text() == std::string_view(expected.data()),
                  "a well-formed message comes out as by printf");
}

void tryWellFormed(fuzz::Bytes& bytes) {
    constexpr std::string_view integers = "diouxX";
    constexpr std::string_view reals = "aAeEfFgG";
    const std::string before = "x = ";
    const std::string directive = before + takeDirective(bytes);
    const auto choice = bytes.take<std::uint8_t>();
    const char integer = integers[choice % integers.size()];
    const char real = reals[choice % reals.size()];
    switch (bytes.take<std::uint8_t>() % 8) {
    case 0:
        return compare(directive + integer, bytes.take<int>());
    case 1:
        return compare(directive + 'l' + integer, bytes.take<long>());
    case 2:
        return compare(directive + "ll" + integer, bytes.take<long long>());
    case 3:
        return compare(directive + "hh" + integer, bytes.take<int>());
    case 4:
        return compare(directive + 'h' + integer, bytes.take<int>());
    case 5:
        return compare(directive + real, bytes.take<double>());
    case 6:
        return compare(directive + 's', bytes.takeText().c_str());
    default:
        return compare(directive + 'c', 1 + bytes.take<std::uint8_t>() % 127);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes bytes(data, size);
    (bytes.take<std::uint8_t>() & 1U) != 0 ? tryWellFormed(bytes) : tryWildFormat(bytes);
    return 0;
}
