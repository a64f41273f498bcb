#include "fmu_runtime/output_file_record.h"

#include <utility>

namespace fmu_runtime {

bool OutputFileRecord::open(const char* path) {
    path_ = path != nullptr ? path : "";
    if (file_.isOpen()) {
        replaced_.push_back(std::move(file_));
    }
    file_ = path != nullptr ? platform::OutputFile(path) : platform::OutputFile();
    failureReported_ = false;
    return !file_.isTaken() || reopen(path);
}

bool OutputFileRecord::reopen(const char* path) {
    for (platform::OutputFile& file : replaced_) {
        if (file.isAt(path)) {
            file.clear();
            file_ = std::move(file);
            std::swap(file, replaced_.back());
            replaced_.pop_back();
            return true;
        }
    }
    return false;
}

bool OutputFileRecord::write(std::string_view text) {
    return file_.write(text);
}

bool OutputFileRecord::isNewFailure() {
    return !std::exchange(failureReported_, true);
}

LogMessage OutputFileRecord::failure() const {
    return message("Failed to write ");
}

LogMessage OutputFileRecord::refusal() const {
    return message("Failed to open ");
}

LogMessage OutputFileRecord::message(const char* problem) const {
    LogMessage text(problem);
    text.add(name_).add(" ").add(path_).add(": ").add(file_.lastError());
    return text;
}

void OutputFileRecord::close() {
    file_.close();
    replaced_.clear();
}

} // namespace fmu_runtime
