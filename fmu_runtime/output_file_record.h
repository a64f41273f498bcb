#pragma once

#include "fmu_runtime/log_message.h"
#include "platform/output_file.h"

#include <string>
#include <string_view>
#include <vector>

namespace fmu_runtime {

/// A text file of a run: its log or its results.
class OutputFileRecord {
  public:
    /// `name` says in messages what the file is; it has to outlive the record.
    explicit OutputFileRecord(const char* name) : name_(name) {}

    /// Writes to `path` from now on. A file that is replaced stays open until close(). Where the
    /// path cannot be opened the record is left without a file. False when that is because somebody
    /// else has the file; one that the record has already, it begins anew.
    bool open(const char* path);

    [[nodiscard]] bool isOpen() const { return file_.isOpen(); }

    /// Appends `text` in one write. False when the file cannot be written.
    bool write(std::string_view text);

    [[nodiscard]] bool hasFailed() const { return failureReported_; }

    /// Asked after a write that failed: true the first time, when failure() is to be reported.
    bool isNewFailure();

    /// "Failed to write " the file and why.
    [[nodiscard]] LogMessage failure() const;

    /// "Failed to open " the file and why.
    [[nodiscard]] LogMessage refusal() const;

    /// Closes the file and those that it replaced.
    void close();

  private:
    bool reopen(const char* path);
    [[nodiscard]] LogMessage message(const char* problem) const;

    const char* name_;
    platform::OutputFile file_;
    std::string path_;
    bool failureReported_ = false;
    std::vector<platform::OutputFile> replaced_; ///< All of them are open.
};

} // namespace fmu_runtime
