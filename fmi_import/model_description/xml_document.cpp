#include "fmi_import/xml_document.h"

#include "platform/files.h"
#include "platform/path_style.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <system_error>

namespace fmi_import {

namespace {

bool hasOneElement(const pugi::xml_document& document) {
    const auto children = document.children();
    return std::count_if(children.begin(), children.end(), [](pugi::xml_node node) {
               return node.type() == pugi::node_element;
           }) == 1;
}

} // namespace

LineIndex::LineIndex(std::string_view text) {
    for (std::size_t at = text.find('\n'); at != std::string_view::npos;
         at = text.find('\n', at + 1)) {
        ends_.push_back(static_cast<std::uint32_t>(at));
    }
}

std::size_t LineIndex::lineAt(std::ptrdiff_t offset) const {
    const auto end = std::ranges::lower_bound(ends_, offset, {}, [](std::uint32_t position) {
        return static_cast<std::ptrdiff_t>(position);
    });
    return static_cast<std::size_t>(end - ends_.begin()) + 1;
}

std::optional<FileText> readFile(const std::string& path) {
    const auto nativePath = platform::nativePath(path);
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(nativePath, error);
    std::ifstream file(nativePath, std::ios::binary);
    if (error || !file || size > largestModelDescription) {
        return std::nullopt;
    }
    FileText text{std::make_unique_for_overwrite<char[]>(size), size};
    file.read(text.bytes.get(), static_cast<std::streamsize>(size));
    return file ? std::optional(std::move(text)) : std::nullopt;
}

XmlFault faultOf(const pugi::xml_document& document, const pugi::xml_parse_result& result,
                 std::size_t size) {
    const auto end = static_cast<std::ptrdiff_t>(size);
    const bool stoppedAtEnd = result.offset + 1 >= end;
    if (size == 0 || result.status == pugi::status_no_document_element) {
        return {"no element found", end};
    }
    switch (result.status) {
    case pugi::status_ok:
        return {hasOneElement(document) ? "" : "junk after document element", end};
    case pugi::status_out_of_memory:
        return {"out of memory", result.offset};
    case pugi::status_end_element_mismatch:
        return stoppedAtEnd ? XmlFault{"no element found", end}
                            : XmlFault{"mismatched tag", result.offset};
    default:
        return {stoppedAtEnd ? "unclosed token" : "not well-formed (invalid token)", result.offset};
    }
}

pugi::xml_node rootElement(const pugi::xml_document& document) {
    return document.document_element();
}

std::string parseErrorText(std::size_t line, std::string_view reason) {
    return "Parse error at line " + std::to_string(line) + ":\n" + std::string(reason);
}

std::string modelDescriptionPath(std::string_view directory) {
    return std::string(directory) + platform::nativePaths().separator + "modelDescription.xml";
}

} // namespace fmi_import
