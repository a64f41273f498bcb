#include "fmi_import/archive_entry_rules.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace fmi_import {

namespace {

bool isControl(char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '\x7f';
}

bool hasDriveLetter(std::string_view name) {
    return name.size() > 1 && name[1] == ':' &&
           std::isalpha(static_cast<unsigned char>(name[0])) != 0;
}

std::string inCapitals(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return result;
}

/// Windows takes "NUL", "nul.txt" and "COM1 .dat" for devices, in every folder.
bool isDeviceName(std::string_view component) {
    constexpr std::array<std::string_view, 6> devices{"CON", "PRN",    "AUX",
                                                      "NUL", "CONIN$", "CONOUT$"};
    std::string stem = inCapitals(component.substr(0, component.find('.')));
    stem.erase(stem.find_last_not_of(' ') + 1);
    const bool numbered = (stem.starts_with("COM") || stem.starts_with("LPT")) &&
                          stem.size() == 4 && stem[3] >= '0' && stem[3] <= '9';
    return numbered || std::ranges::find(devices, stem) != devices.end();
}

std::optional<std::string> windowsComponentFault(std::string_view component) {
    if (component.find_first_of(":*?\"<>|") != std::string_view::npos) {
        return "it has a character that Windows does not allow in names";
    }
    if (component != "." && (component.ends_with('.') || component.ends_with(' '))) {
        return "a part of it ends in a dot or a blank, which Windows drops";
    }
    if (isDeviceName(component)) {
        return "a part of it is the name of a device";
    }
    return std::nullopt;
}

std::optional<std::string> componentFault(NameRules rules, std::string_view component) {
    if (component == "..") {
        return "it leads out of its folder";
    }
    return rules == NameRules::windows && !component.empty() ? windowsComponentFault(component)
                                                             : std::nullopt;
}

} // namespace

std::optional<std::string> entryNameFault(NameRules rules, std::string_view name) {
    if (name.empty()) {
        return "it has no name";
    }
    if (name.size() > longestEntryName) {
        return "its name is longer than " + std::to_string(longestEntryName) + " bytes";
    }
    if (std::ranges::any_of(name, isControl)) {
        return "its name has a control character";
    }
    if (name.starts_with('/') || name.starts_with('\\') || hasDriveLetter(name)) {
        return "its path is absolute";
    }
    const std::string path = withForwardSlashes(name);
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        if (auto fault = componentFault(rules, std::string_view(path).substr(begin, end - begin))) {
            return fault;
        }
        begin = end + 1;
    }
    return std::nullopt;
}

std::optional<std::string> entryKindFault(std::uint32_t externalAttributes) {
    constexpr std::uint32_t kindMask = 0170000;
    constexpr std::uint32_t regularFile = 0100000;
    constexpr std::uint32_t directory = 0040000;
    const std::uint32_t kind = (externalAttributes >> 16U) & kindMask;
    if (kind == 0 || kind == regularFile || kind == directory) {
        return std::nullopt;
    }
    return "it is a link or a special file";
}

std::string withForwardSlashes(std::string_view name) {
    std::string result(name);
    std::ranges::replace(result, '\\', '/');
    return result;
}

std::string presentableName(std::string_view name) {
    std::string result(name.substr(0, longestEntryName));
    std::ranges::replace_if(result, isControl, '?');
    return result;
}

} // namespace fmi_import
