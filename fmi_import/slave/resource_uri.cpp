#include "fmi_import/slave/resource_uri.h"

#include <string_view>

namespace fmi_import {

namespace {

bool staysAsItIs(char8_t c) {
    constexpr std::u8string_view marks = u8"-_.~/";
    return (c >= u8'A' && c <= u8'Z') || (c >= u8'a' && c <= u8'z') || (c >= u8'0' && c <= u8'9') ||
           marks.find(c) != std::u8string_view::npos;
}

void appendEncoded(std::string& uri, char8_t c) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    uri += '%';
    uri += digits[c / 16U];
    uri += digits[c % 16U];
}

/// What stands between "file:" and the path: nothing more for "//server/share", an empty server
/// name otherwise, and a slash before a drive letter.
std::string_view authority(std::u8string_view path, bool hasDriveLetter) {
    if (path.starts_with(u8"//")) {
        return "file:";
    }
    return hasDriveLetter ? "file:///" : "file://";
}

} // namespace

std::string fileUri(const std::filesystem::path& path) {
    const std::u8string text = path.generic_u8string();
    const bool hasDriveLetter = path.has_root_name() && text.size() > 1 && text[1] == u8':';
    std::string uri(authority(text, hasDriveLetter));
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (staysAsItIs(text[at]) || (hasDriveLetter && at == 1)) {
            uri += static_cast<char>(text[at]);
        } else {
            appendEncoded(uri, text[at]);
        }
    }
    while (uri.ends_with('/')) {
        uri.pop_back();
    }
    return uri;
}

} // namespace fmi_import
