#include "programs/support/kept_output.h"

#include "platform/files.h"
#include "programs/support/joined.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>
#include <system_error>

namespace program_support {

namespace fs = std::filesystem;

namespace {

constexpr const char* outputFile = "standard_output";
constexpr const char* errorFile = "standard_error";
constexpr std::string_view noInstance = "fmi2Instantiate returned no instance";

bool contains(std::string_view line, std::string_view part) {
    return line.find(part) != std::string_view::npos;
}

/// The text of an error line of the FMI library or of the runtime about what it loads; empty for
/// every other line.
std::string_view loadErrorIn(std::string_view line) {
    for (const std::string_view level : {"log level = 1: ", "log level = 2: "}) {
        if (const auto found = line.find(level); found != std::string_view::npos) {
            return line.substr(found + level.size());
        }
    }
    const bool isRefusal =
        line.starts_with("Working directory ") && contains(line, " cannot be used: ");
    const bool isSecond = contains(line, " allows only one instance in a process ");
    return isRefusal || isSecond ? line : std::string_view();
}

bool isComplaint(std::string_view line) {
    constexpr std::array<std::string_view, 4> levels = {"][Warning] ", "][Discard] ", "][Error] ",
                                                        "][Fatal] "};
    return line.starts_with("Ignoring ") || line.starts_with("Failed to write ") ||
           line.starts_with("FMISolver: another run has ") ||
           (line.starts_with('[') && std::ranges::any_of(levels, [&](std::string_view level) {
                return contains(line, level);
            }));
}

bool isStatus(std::string_view line) {
    return line.starts_with("fmi2") && contains(line, " returned ");
}

/// An error of the FMI library that ends in a colon has its reason in the next line.
bool isReason(std::string_view line, const std::vector<std::string>& errors) {
    return !errors.empty() && errors.back().ends_with(':') && !line.starts_with("module = ");
}

void take(std::string_view line, KeptMessages& messages) {
    if (isReason(line, messages.loadErrors)) {
        messages.loadErrors.back().append(" ").append(line);
    } else if (const auto error = loadErrorIn(line); !error.empty()) {
        messages.loadErrors.emplace_back(error);
    } else if (line == noInstance) {
        messages.isRefused = true;
    } else if (isStatus(line)) {
        messages.lastStatus = line;
    } else if (isComplaint(line)) {
        messages.complaints.emplace_back(line);
    }
}

/// That an archive could not be unpacked says nothing new behind the reason.
void dropConsequences(std::vector<std::string>& errors) {
    const auto isConsequence = [](const std::string& error) {
        return error.starts_with("Unpacking of FMU ");
    };
    if (!std::ranges::all_of(errors, isConsequence)) {
        std::erase_if(errors, isConsequence);
    }
}

} // namespace

KeptOutput::KeptOutput(const fs::path& directory) {
    if (!directory.empty()) {
        output_.emplace(stdout, platform::narrowPath(directory / outputFile));
        error_.emplace(stderr, platform::narrowPath(directory / errorFile));
    }
}

std::FILE* KeptOutput::error() const {
    return error_ ? error_->original() : stderr;
}

std::string KeptMessages::reason() const {
    if (!loadErrors.empty()) {
        return "; " + joined(loadErrors, "; ");
    }
    if (isRefused) {
        return "; the FMU refused to be instantiated (fmi2Instantiate)" +
               (complaints.empty() ? "" : ": " + complaints.back());
    }
    return lastStatus.empty() ? "" : "; " + lastStatus;
}

KeptMessages takeKeptMessages(const fs::path& directory) {
    KeptMessages messages;
    for (const char* name : {outputFile, errorFile}) {
        const auto file = directory / name;
        std::ifstream stream(file, std::ios::binary);
        for (std::string line; std::getline(stream, line);) {
            line.erase(line.find_last_not_of('\r') + 1);
            take(line, messages);
        }
        stream.close();
        std::error_code ignored;
        fs::resize_file(file, 0, ignored);
    }
    dropConsequences(messages.loadErrors);
    return messages;
}

} // namespace program_support
