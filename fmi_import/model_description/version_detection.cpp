#include "fmi_import/model_description/version_detection.h"

#include "fmi_import/model_description/xml_reader.h"
#include "platform/files.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <optional>
#include <string>

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

/// The beginning of a model description, up to its first start tag or the end of the file.
class Beginning {
  public:
    explicit Beginning(const std::string& path)
        : file_(platform::nativePath(path), std::ios::binary) {
        readMore();
        while (readable_ && !findRoot() && readMore()) {
        }
    }

    [[nodiscard]] bool isReadable() const { return readable_; }

    /// What is wrong before the end of the root's start tag; null when nothing is.
    [[nodiscard]] const XmlFault* fault() const { return fault_ ? &*fault_ : nullptr; }

    /// The value of an attribute of the root; null when there is none.
    [[nodiscard]] const char* attribute(std::string_view name) const {
        return root_.attribute(name);
    }

    [[nodiscard]] std::string_view rootName() const { return root_.name; }

    [[nodiscard]] std::size_t line() const { return root_.line; }

  private:
    /// False when the file has no more.
    bool readMore() {
        const std::size_t before = text_.size();
        text_.resize(
            std::min<std::size_t>(before + std::max(firstPiece, before), largestModelDescription));
        file_.read(text_.data() + before, static_cast<std::streamsize>(text_.size() - before));
        readable_ = readable_ || file_.good() || file_.eof();
        text_.resize(before + static_cast<std::size_t>(file_.gcount()));
        return text_.size() > before;
    }

    /// False when there is a fault, which may be that more of the file is needed.
    bool findRoot() {
        const bool isWhole = file_.eof();
        fault_.reset();
        try {
            utf8_ = asUtf8(copy(), isWhole);
            xml_.emplace(utf8_);
            root_ = xml_->root();
            return true;
        } catch (const XmlFault& fault) {
            fault_ = fault;
        }
        return false;
    }

    [[nodiscard]] FileText copy() const {
        FileText result = makeText(text_.size());
        std::ranges::copy(text_, result.bytes.get());
        return result;
    }

    std::ifstream file_;
    bool readable_ = false;
    std::string text_;
    FileText utf8_;
    std::optional<XmlReader> xml_;
    XmlElement root_;
    std::optional<XmlFault> fault_;
};

/// The version that the root tells; unknown with the reason in the log.
fmi_version_enu_t versionOf(const Log& log, const Beginning& beginning) {
    if (beginning.rootName() != "fmiModelDescription") {
        log.fatal(module::version, {"First element in XML must be fmiModelDescription"});
        return fmi_version_unknown_enu;
    }
    const char* text = beginning.attribute("fmiVersion");
    if (text == nullptr) {
        log.fatal(module::version,
                  {"Could not find fmiVersion attribute in the XML. Cannot proceed."});
        return fmi_version_unknown_enu;
    }
    const auto version = versionFromText(text);
    if (!version) {
        log.fatal(module::version,
                  {"Could not parse fmiVersion attribute '", text,
                   "'. Expected format is 'major.minor' or 'major.minor.patch' with numeric "
                   "components"});
        return fmi_version_unknown_enu;
    }
    const fmi_version_enu_t known = knownVersion(*version);
    if (known == fmi_version_unknown_enu) {
        log.fatal(module::version,
                  {"This version of FMI standard is not supported (fmiVersion=", text, ")"});
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
    if (const XmlFault* fault = beginning.fault()) {
        reportParseError(log, module::version, fault->line, fault->reason);
        return fmi_version_unknown_enu;
    }
    const fmi_version_enu_t version = versionOf(log, beginning);
    if (version == fmi_version_unknown_enu) {
        reportParseError(log, module::version, beginning.line(), "parsing aborted");
    } else {
        log.verbose(module::version, {"XML specifies FMI ", fmi_version_to_string(version)});
    }
    return version;
}

} // namespace fmi_import
