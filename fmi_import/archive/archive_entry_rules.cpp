#include "fmi_import/archive/archive_entry_rules.h"

#include "platform/file_names.h"

#include <algorithm>
#include <cctype>
#include <vector>

namespace fmi_import {

namespace {

bool isControl(char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '\x7f';
}

bool hasDriveLetter(std::string_view name) {
    return name.size() > 1 && name[1] == ':' &&
           std::isalpha(static_cast<unsigned char>(name[0])) != 0;
}

/// What is left of a part of a path where dots and blanks at its end are dropped.
std::string_view withoutDroppedEnd(std::string_view component) {
    return component.substr(0, component.find_last_not_of(". ") + 1);
}

std::optional<std::string> windowsComponentFault(std::string_view component) {
    if (component.find_first_of(":*?\"<>|") != std::string_view::npos) {
        return "it has a character that Windows does not allow in names";
    }
    if (component != "." && withoutDroppedEnd(component).empty()) {
        return "a part of it has only dots and blanks, which Windows drops";
    }
    if (platform::isDeviceName(component)) {
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

/// The parts of a path with forward slashes; a path that ends in one has an empty last part.
std::vector<std::string_view> components(std::string_view path) {
    std::vector<std::string_view> result;
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        result.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return result;
}

/// Clean-up scripts are looked for in a folder of this name, beside the models of a host.
bool isInScriptFolder(std::string_view path) {
    for (const std::string_view component : components(path)) {
        if (!component.empty() && component != ".") {
            return platform::inCapitals(withoutDroppedEnd(component)) == "FMITOOLS";
        }
    }
    return false;
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
    if (isInScriptFolder(path)) {
        return "the folder FMITools is for clean-up scripts of the user's own";
    }
    for (const std::string_view component : components(path)) {
        if (auto fault = componentFault(rules, component)) {
            return fault;
        }
    }
    return std::nullopt;
}

std::string nativeEntryName(NameRules rules, std::string_view name) {
    const std::string path = withForwardSlashes(name);
    std::string result;
    for (const std::string_view component : components(path)) {
        const bool isDropped = rules == NameRules::windows && component != ".";
        result.append(result.empty() ? "" : "/");
        result.append(isDropped ? withoutDroppedEnd(component) : component);
    }
    return result;
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
