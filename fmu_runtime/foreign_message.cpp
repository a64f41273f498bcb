#include "fmu_runtime/foreign_message.h"

#include "platform/foreign_text.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <optional>

namespace fmu_runtime {

namespace {

constexpr std::string_view flagCharacters = "-+ #0'";
constexpr std::string_view wideTextConversions = "SZ"; // Of the Windows C library.
constexpr std::string_view integerConversions = "diouxX";
constexpr std::string_view realConversions = "aAeEfFgG";

/// Wider than any message: a larger width or precision cannot show in the result.
constexpr int widest = 1024;

/// Longer than any message: of a format beyond it nothing is read.
constexpr std::size_t longestFormat = 2048;

/// The caller's arguments; in a record because a va_list itself does not pass by reference
/// everywhere.
struct Arguments {
    std::va_list list;
};

/// One conversion as written in a format: "%-8.3lf".
struct Directive {
    std::string_view text; ///< As it stands, from "%" to the conversion character.
    std::string_view flags;
    int width = 0;
    std::optional<int> precision;
    bool leftAdjusted = false; ///< By a negative "*" width.
    std::string_view length;
    char conversion = '\0';
};

/// Walks over one directive, taking the values of "*" from the arguments.
class DirectiveReader {
  public:
    DirectiveReader(const char* percent, Arguments& arguments)
        : begin_(percent),
          position_(percent + 1),
          arguments_(arguments) {}

    Directive read() {
        Directive directive;
        directive.flags = readAny(flagCharacters);
        directive.width = readNumber();
        if (directive.width < 0) {
            directive.leftAdjusted = true;
            directive.width = -directive.width;
        }
        if (*position_ == '.') {
            ++position_;
            const int precision = readNumber();
            directive.precision = precision < 0 ? std::nullopt : std::optional(precision);
        }
        directive.length = readLength();
        if (*position_ != '\0') {
            directive.conversion = *position_++;
        }
        directive.text = {begin_, position_};
        return directive;
    }

  private:
    std::string_view readAny(std::string_view characters) {
        const char* first = position_;
        while (*position_ != '\0' && characters.find(*position_) != std::string_view::npos) {
            ++position_;
        }
        return {first, position_};
    }

    int readNumber() {
        if (*position_ == '*') {
            ++position_;
            return std::clamp(va_arg(arguments_.list, int), -widest, widest);
        }
        int number = 0;
        for (const char digit : readAny("0123456789")) {
            number = std::min(number * 10 + (digit - '0'), widest);
        }
        return number;
    }

    std::string_view readLength() {
        // The form of the Windows C library, which FMUs built there may use.
        if (std::strncmp(position_, "I64", 3) == 0 || std::strncmp(position_, "I32", 3) == 0) {
            position_ += 3;
            return {position_ - 3, 3};
        }
        return readAny("hlLjztwI");
    }

    const char* begin_;
    const char* position_;
    Arguments& arguments_;
};

using PrintedText = std::array<char, LogMessage::capacity + 1>;

/// One value printed with the directive's own flags, width and precision into `text`.
template <typename Value>
std::string_view printed(PrintedText& text, const Directive& directive, std::string_view length,
                         Value value) {
    std::array<char, 32> format{};
    char* end = format.data();
    *end++ = '%';
    if (directive.leftAdjusted) {
        *end++ = '-';
    }
    end = std::ranges::copy(directive.flags.substr(0, flagCharacters.size()), end).out;
    end = std::ranges::copy(std::string_view("*.*"), end).out;
    end = std::ranges::copy(length, end).out;
    *end = directive.conversion;
    const int size = std::snprintf(text.data(), text.size(), format.data(), directive.width,
                                   directive.precision.value_or(-1), value);
    return {text.data(), std::min(static_cast<std::size_t>(std::max(size, 0)), text.size() - 1)};
}

template <typename Value>
void print(LogMessage& message, const Directive& directive, std::string_view length, Value value) {
    PrintedText text;
    message.add(printed(text, directive, length, value));
}

std::intmax_t readSigned(std::string_view length, Arguments& arguments) {
    if (length == "hh") {
        return static_cast<signed char>(va_arg(arguments.list, int));
    }
    if (length == "h") {
        return static_cast<short>(va_arg(arguments.list, int));
    }
    if (length == "l") {
        return va_arg(arguments.list, long);
    }
    if (length == "ll" || length == "j" || length == "z" || length == "t" || length == "I64" ||
        length == "I") {
        return va_arg(arguments.list, long long);
    }
    return va_arg(arguments.list, int);
}

std::uintmax_t readUnsigned(std::string_view length, Arguments& arguments) {
    const auto value = static_cast<std::uintmax_t>(readSigned(length, arguments));
    // Widening kept the sign; an unsigned value of the narrower type has none.
    if (length == "hh") {
        return static_cast<unsigned char>(value);
    }
    if (length == "h") {
        return static_cast<unsigned short>(value);
    }
    if (length == "l") {
        return static_cast<unsigned long>(value);
    }
    return length.empty() || length == "I32" ? static_cast<unsigned int>(value) : value;
}

void printInteger(LogMessage& message, const Directive& directive, Arguments& arguments) {
    if (directive.conversion == 'd' || directive.conversion == 'i') {
        print(message, directive, "j", readSigned(directive.length, arguments));
    } else {
        print(message, directive, "j", readUnsigned(directive.length, arguments));
    }
}

/// The host's locale may have another decimal point; numbers are written with "." everywhere.
void addReal(LogMessage& message, std::string_view text) {
    const std::string_view point = std::localeconv()->decimal_point;
    const auto position = point == "." ? std::string_view::npos : text.find(point);
    if (position == std::string_view::npos) {
        message.add(text);
    } else {
        message.add(text.substr(0, position)).add(std::string_view("."));
        message.add(text.substr(position + point.size()));
    }
}

void printReal(LogMessage& message, const Directive& directive, Arguments& arguments) {
    PrintedText text;
    if (directive.length == "L" && platform::callersHaveLongDouble) {
        addReal(message, printed(text, directive, "L", va_arg(arguments.list, long double)));
    } else {
        addReal(message, printed(text, directive, "", va_arg(arguments.list, double)));
    }
}

void printText(LogMessage& message, const Directive& directive, Arguments& arguments) {
    const char* text = va_arg(arguments.list, const char*);
    if (!directive.length.empty() && directive.length != "h") { // A text of wide characters.
        message.add(directive.text);
        return;
    }
    if (text == nullptr) {
        print(message, directive, "", "(null)");
        return;
    }
    std::array<char, widest + 1> copy;
    const auto longest = static_cast<std::size_t>(directive.precision.value_or(widest));
    const auto size = platform::copyForeignText(text, copy.data(), longest);
    if (size < 0) {
        message.add(std::string_view("(unreadable)"));
        return;
    }
    copy[static_cast<std::size_t>(size)] = '\0';
    print(message, directive, "", static_cast<const char*>(copy.data()));
}

/// False when the character is the one that ends a text.
bool printCharacter(LogMessage& message, const Directive& directive, Arguments& arguments) {
    PrintedText text;
    const auto whole = printed(text, directive, "", va_arg(arguments.list, int));
    const auto end = whole.find('\0');
    message.add(whole.substr(0, end));
    return end == std::string_view::npos;
}

/// A directive whose argument is passed over: it comes out as it stands.
void skip(LogMessage& message, const Directive& directive, Arguments& arguments) {
    const char conversion = directive.conversion;
    // NOLINTNEXTLINE(bugprone-branch-clone): the types that are passed over differ.
    if (conversion == 'C') {
        static_cast<void>(va_arg(arguments.list, int));
    } else if (conversion == 'n' ||
               wideTextConversions.find(conversion) != std::string_view::npos) {
        static_cast<void>(va_arg(arguments.list, void*));
    }
    message.add(directive.text);
}

/// False when the message ends with the directive.
bool printDirective(LogMessage& message, const Directive& directive, Arguments& arguments) {
    const char conversion = directive.conversion;
    if (conversion == '%') {
        message.add(std::string_view("%"));
    } else if (conversion == '\0') {
        message.add(directive.text);
    } else if (integerConversions.find(conversion) != std::string_view::npos) {
        printInteger(message, directive, arguments);
    } else if (realConversions.find(conversion) != std::string_view::npos) {
        printReal(message, directive, arguments);
    } else if (conversion == 's') {
        printText(message, directive, arguments);
    } else if (conversion == 'c') {
        return printCharacter(message, directive, arguments);
    } else if (conversion == 'p') {
        print(message, directive, "", va_arg(arguments.list, const void*));
    } else {
        skip(message, directive, arguments);
    }
    return true;
}

} // namespace

LogMessage formatForeignMessage(const char* foreignFormat, std::va_list arguments) noexcept {
    // The directives are read from a copy: the text may end where memory does, or change meanwhile.
    const ForeignText<longestFormat> copied(foreignFormat);
    const char* format = copied.text();
    LogMessage message;
    Arguments copy;
    va_copy(copy.list, arguments);
    bool goesOn = true;
    while (goesOn && *format != '\0' && message.room() > 0) {
        const std::size_t plain = std::min(std::strcspn(format, "%"), message.room());
        message.add(std::string_view(format, plain));
        format += plain;
        if (*format == '%') {
            const Directive directive = DirectiveReader(format, copy).read();
            goesOn = printDirective(message, directive, copy);
            format += directive.text.size();
        }
    }
    va_end(copy.list);
    return message;
}

LogMessage withoutDoubledPercents(std::string_view text) noexcept {
    LogMessage message;
    while (!text.empty()) {
        const auto doubled = text.find("%%");
        const bool found = doubled != std::string_view::npos;
        message.add(text.substr(0, found ? doubled + 1 : text.size()));
        text.remove_prefix(found ? doubled + 2 : text.size());
    }
    return message;
}

} // namespace fmu_runtime
