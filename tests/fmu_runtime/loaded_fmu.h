#pragma once

#include "fmi_tools.h"
#include "platform/shared_library.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace test_support {

/// A log line without its time: "[FMITools][None][OK] Closing plugin".
inline std::string withoutTime(std::string_view line) {
    const auto end = line.find(']');
    return std::string(end == std::string_view::npos ? line : line.substr(end + 1));
}

inline std::vector<std::string> withoutTimes(std::string_view log) {
    std::vector<std::string> result;
    for (const auto& line : lines(log)) {
        result.push_back(withoutTime(line));
    }
    return result;
}

/// An example FMU loaded through the C interface, with log and results files of its own.
class LoadedFmu {
  public:
    explicit LoadedFmu(std::string_view name, const std::filesystem::path& directory = {})
        : directory_(directory),
          handle_(fmiToolsLoadFmu(narrow(fmuPath(name)).c_str(),
                                  narrow(directory_ / "unpacked").c_str(),
                                  narrow(directory_ / "").c_str())) {
        EXPECT_NE(handle_, nullptr);
        fmiToolsSetLogFile(handle_, narrow(logFile()).c_str());
        fmiToolsSetResultsFile(handle_, narrow(resultsFile()).c_str());
    }

    ~LoadedFmu() { cleanUp(); }

    LoadedFmu(const LoadedFmu&) = delete;
    LoadedFmu& operator=(const LoadedFmu&) = delete;
    LoadedFmu(LoadedFmu&&) = delete;
    LoadedFmu& operator=(LoadedFmu&&) = delete;

    operator FmiToolsInstance*() const { return handle_; } // NOLINT: stands for the handle

    void cleanUp() { fmiToolsCleanup(std::exchange(handle_, nullptr)); }

    void script(const char* text) { fmiToolsSetVariableValue(handle_, "script", text); }

    double real(const char* name) {
        double value = -1.0;
        EXPECT_EQ(fmiToolsGetRealVariableValue(handle_, name, &value), 0) << name;
        return value;
    }

    /// What the scripted FMU was called with, a line a call.
    std::string calls() {
        const char* text = nullptr;
        EXPECT_EQ(fmiToolsGetStringVariableValue(handle_, "calls", &text), 0);
        return text != nullptr ? text : "";
    }

    std::filesystem::path logFile() const { return directory_ / "run.out"; }

    std::filesystem::path resultsFile() const { return directory_ / "run.csv"; }

    std::filesystem::path unpacked() const { return directory_ / "unpacked"; }

    /// The library of an FMU whose model identifier this is.
    std::filesystem::path library(const std::string& identifier) const {
        return unpacked() / "binaries" / platform::SharedLibrary::fmiPlatform() /
               (identifier + platform::SharedLibrary::suffix());
    }

    /// The lines of the log so far, without times.
    std::vector<std::string> log() const { return withoutTimes(readFile(logFile())); }

    /// The last `count` lines of the log, each without time and "[FMITools][None]".
    std::vector<std::string> lastLines(std::size_t count) const {
        constexpr std::string_view own = "[FMITools][None]";
        std::vector<std::string> all = log();
        all.erase(all.begin(),
                  all.size() > count ? all.end() - static_cast<long>(count) : all.begin());
        for (auto& line : all) {
            line = line.starts_with(own) ? line.substr(own.size()) : line;
        }
        return all;
    }

    std::vector<std::string> rows() const { return lines(readFile(resultsFile())); }

  private:
    TemporaryDirectory directory_;
    FmiToolsInstance* handle_;
};

} // namespace test_support
