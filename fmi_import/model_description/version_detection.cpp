#include "fmi_import/version_detection.h"

#include "fmi_import/xml_document.h"
#include "platform/files.h"

#include <charconv>
#include <cstring>
#include <fstream>

namespace fmi_import {

namespace {

constexpr std::size_t firstPiece = std::size_t{16} * 1024;

struct Version {
    unsigned major;
    unsigned minor;
};

/// Reads digits from the front of `text`; nothing when there are none.
std::optional<unsigned> takeNumber(std::string_view& text) {
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

bool takePoint(std::string_view& text) {
    if (!text.starts_with('.')) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

/// "major.minor" or "major.minor.patch", digits only; the patch does not matter.
std::optional<Version> versionFromText(std::string_view text) {
    const auto major = takeNumber(text);
    const auto minor = major && takePoint(text) ? takeNumber(text) : std::nullopt;
    if (minor && takePoint(text) && !takeNumber(text)) {
        return std::nullopt;
    }
    return minor && text.empty() ? std::optional(Version{*major, *minor}) : std::nullopt;
}

fmi_version_enu_t knownVersion(Version version) {
    if (version.minor != 0 || version.major > 3) {
        return fmi_version_unknown_enu;
    }
    return static_cast<fmi_version_enu_t>(version.major);
}

/// True when the parser stopped inside the root's start tag: its attributes cannot be trusted.
bool stoppedInStartTag(const pugi::xml_parse_result& result, pugi::xml_node root) {
    return !root || (!root.first_child() && (result.status == pugi::status_bad_attribute ||
                                             result.status == pugi::status_bad_start_element));
}

/// The beginning of a model description, up to its first start tag or the end of the file.
class Beginning {
  public:
    explicit Beginning(const std::string& path)
        : file_(platform::nativePath(path), std::ios::binary) {
        std::size_t piece = firstPiece;
        while (readMore(piece)) {
            result_ = document_.load_buffer(text_.data(), text_.size());
            if (!stoppedInStartTag(result_, root())) {
                return;
            }
            piece = text_.size();
        }
    }

    [[nodiscard]] bool isReadable() const { return readable_; }

    [[nodiscard]] pugi::xml_node root() const { return rootElement(document_); }

    [[nodiscard]] bool hasStartTag() const { return !stoppedInStartTag(result_, root()); }

    [[nodiscard]] XmlFault fault() const { return faultOf(document_, result_, text_.size()); }

    /// Line of the root's start tag, or of the fault before its end.
    [[nodiscard]] std::size_t line() const {
        return LineIndex(text_).lineAt(hasStartTag() ? root().offset_debug() : fault().offset);
    }

  private:
    bool readMore(std::size_t size) {
        const std::size_t before = text_.size();
        text_.resize(std::min<std::size_t>(before + size, largestModelDescription));
        file_.read(text_.data() + before, static_cast<std::streamsize>(text_.size() - before));
        readable_ = readable_ || file_.good() || file_.eof();
        text_.resize(before + static_cast<std::size_t>(file_.gcount()));
        return text_.size() > before;
    }

    std::ifstream file_;
    bool readable_ = false;
    std::string text_;
    pugi::xml_document document_;
    pugi::xml_parse_result result_;
};

/// The version that `root` tells; unknown with the reason in the log.
fmi_version_enu_t versionOf(const Log& log, pugi::xml_node root) {
    if (std::strcmp(root.name(), "fmiModelDescription") != 0) {
        log.fatal(module::version, {"First element in XML must be fmiModelDescription"});
        return fmi_version_unknown_enu;
    }
    const pugi::xml_attribute attribute = root.attribute("fmiVersion");
    if (!attribute) {
        log.fatal(module::version,
                  {"Could not find fmiVersion attribute in the XML. Cannot proceed."});
        return fmi_version_unknown_enu;
    }
    const auto version = versionFromText(attribute.value());
    if (!version) {
        log.fatal(module::version,
                  {"Could not parse fmiVersion attribute '", attribute.value(),
                   "'. Expected format is 'major.minor' or 'major.minor.patch' with numeric "
                   "components"});
        return fmi_version_unknown_enu;
    }
    const fmi_version_enu_t known = knownVersion(*version);
    if (known == fmi_version_unknown_enu) {
        log.fatal(module::version, {"This version of FMI standard is not supported (fmiVersion=",
                                    attribute.value(), ")"});
    }
    return known;
}

} // namespace

fmi_version_enu_t detectVersion(const Log& log, const std::string& directory) {
    log.verbose(module::version, {"Parsing XML to detect FMI standard version"});
    const std::string path = modelDescriptionPath(directory);
    const Beginning beginning(path);
    if (!beginning.isReadable()) {
        log.fatal(module::version, {"Cannot open file '", path, "' for parsing"});
        return fmi_version_unknown_enu;
    }
    if (!beginning.hasStartTag()) {
        log.fatal(module::version, {parseErrorText(beginning.line(), beginning.fault().reason)});
        return fmi_version_unknown_enu;
    }
    const fmi_version_enu_t version = versionOf(log, beginning.root());
    if (version == fmi_version_unknown_enu) {
        log.fatal(module::version, {parseErrorText(beginning.line(), "parsing aborted")});
    } else {
        log.verbose(module::version, {"XML specifies FMI ", fmi_version_to_string(version)});
    }
    return version;
}

} // namespace fmi_import
