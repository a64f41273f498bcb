#include "programs/support/run_log.h"

#include "platform/files.h"

#include <algorithm>
#include <fstream>
#include <string_view>
#include <system_error>

namespace program_support {

namespace {

constexpr std::string_view lineOfRuntime = "][FMITools][";
constexpr std::string_view lineOfPlugin = "][FMISolver][";
constexpr std::string_view lastLineOfRuntime = "][FMITools][None][OK] Closing plugin";
constexpr std::size_t tailSize = 16384;

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

/// The level of "[time][module][category][level] message".
std::string_view levelOf(std::string_view line) {
    const auto end = line.find("] ");
    const auto begin = end == std::string_view::npos ? end : line.rfind('[', end);
    return begin == std::string_view::npos ? "" : line.substr(begin + 1, end - begin - 1);
}

void note(std::size_t& count, std::string& first, const std::string& line) {
    if (count++ == 0) {
        first = line;
    }
}

/// A line about what failed because of what an earlier line tells.
bool isConsequence(std::string_view line) {
    return contains(line, "] Results logging failed") ||
           contains(line, "] Attempted step failed") || contains(line, "] Failed to ini") ||
           contains(line, "] Failed to simulate");
}

class LogReader {
  public:
    void take(const std::string& line) {
        const bool ofFmu = !contains(line, lineOfRuntime) && !contains(line, lineOfPlugin);
        report_.begun = report_.begun || !ofFmu;
        const auto level = levelOf(line);
        if (level == "Warning") {
            note(report_.warnings, report_.firstWarning, line);
        } else if (level == "Error" || level == "Discard" || level == "Fatal") {
            note(report_.errors, report_.firstError, line);
        } else {
            return;
        }
        std::string& last = ofFmu ? ofFmu_ : ofOthers_;
        last = last.empty() || !isConsequence(line) ? line : last;
    }

    LogReport report() {
        report_.lastComplaint = ofFmu_.empty() ? ofOthers_ : ofFmu_;
        return report_;
    }

  private:
    LogReport report_;
    std::string ofFmu_;
    std::string ofOthers_;
};

std::string tailOf(const std::string& path) {
    const auto file = platform::nativePath(path);
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
        return {};
    }
    std::ifstream stream(file, std::ios::binary);
    const auto size = std::filesystem::file_size(file, error);
    stream.seekg(static_cast<std::streamoff>(size - std::min<std::uintmax_t>(size, tailSize)));
    std::string tail(tailSize, '\0');
    stream.read(tail.data(), static_cast<std::streamsize>(tailSize));
    tail.resize(static_cast<std::size_t>(stream.gcount()));
    return tail;
}

} // namespace

LogReport readLog(const std::string& path) {
    const auto file = platform::nativePath(path);
    std::error_code error;
    LogReader reader;
    if (std::filesystem::is_regular_file(file, error)) {
        std::ifstream stream(file, std::ios::binary);
        for (std::string line; std::getline(stream, line);) {
            reader.take(line);
        }
    }
    return reader.report();
}

std::string lastLine(const std::string& path) {
    std::string tail = tailOf(path);
    tail.erase(tail.find_last_not_of('\n') + 1);
    const auto begin = tail.rfind('\n');
    return begin == std::string::npos ? tail : tail.substr(begin + 1);
}

bool isLogComplete(const std::string& path) {
    const auto file = platform::nativePath(path);
    std::error_code error;
    if (std::filesystem::is_character_file(file, error)) {
        std::ofstream device(file, std::ios::app); // It tells only when it is written to.
        return static_cast<bool>(device << '\n' << std::flush);
    }
    return !std::filesystem::is_regular_file(file, error) ||
           contains(tailOf(path), lastLineOfRuntime);
}

std::string reasonInLog(const std::string& path) {
    const auto report = readLog(path);
    if (!report.lastComplaint.empty()) {
        return "its log '" + path + "' says: " + report.lastComplaint;
    }
    return report.begun ? "see the end of its log '" + path + "'"
                        : "it left no log; try fmu_run --validate with the FMU";
}

} // namespace program_support
