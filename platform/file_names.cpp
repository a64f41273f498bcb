#include "platform/file_names.h"

#include <algorithm>
#include <array>

namespace platform {

namespace {

bool isDeviceNumber(std::string_view text) {
    // A superscript 1 to 3 counts, in UTF-8 and in the Latin code pages.
    constexpr std::array<std::string_view, 6> superscripts{"\xc2\xb9", "\xc2\xb2", "\xc2\xb3",
                                                           "\xb9",     "\xb2",     "\xb3"};
    return (text.size() == 1 && text[0] >= '0' && text[0] <= '9') ||
           std::ranges::find(superscripts, text) != superscripts.end();
}

bool isControl(char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '\x7f';
}

} // namespace

std::string inCapitals(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return result;
}

bool isDeviceName(std::string_view component) {
    constexpr std::array<std::string_view, 6> devices{"CON", "PRN",    "AUX",
                                                      "NUL", "CONIN$", "CONOUT$"};
    std::string stem = inCapitals(component.substr(0, component.find('.')));
    stem.erase(stem.find_last_not_of(' ') + 1);
    const bool numbered = (stem.starts_with("COM") || stem.starts_with("LPT")) &&
                          isDeviceNumber(std::string_view(stem).substr(3));
    return numbered || std::ranges::find(devices, stem) != devices.end();
}

std::optional<std::string> plainNameFault(std::string_view name) {
    if (name.empty()) {
        return "it is empty";
    }
    if (name.find_first_of("/\\:*?\"<>|") != std::string_view::npos ||
        std::ranges::any_of(name, isControl)) {
        return "it has a character that is not for names of files";
    }
    if (name.ends_with('.') || name.ends_with(' ')) {
        return "it ends with a dot or a blank";
    }
    if (isDeviceName(name)) {
        return "it is the name of a device";
    }
    return std::nullopt;
}

} // namespace platform
