#include "fmu_runtime/output_file_record.h"

#include <utility>

namespace fmu_runtime {

void OutputFileRecord::open(const char* path) {
    path_ = path != nullptr ? path : "";
    replaced_.push_back(std::move(file_));
    file_ = path != nullptr ? platform::OutputFile(path) : platform::OutputFile();
    failureReported_ = false;
}

bool OutputFileRecord::write(std::string_view text) {
    return file_.write(text);
}

bool OutputFileRecord::isNewFailure() {
    return !std::exchange(failureReported_, true);
}

LogMessage OutputFileRecord::failure() const {
    LogMessage message("Failed to write ");
    message.add(name_).add(" ").add(path_).add(": ").add(file_.lastError());
    return message;
}

void OutputFileRecord::close() {
    file_.close();
    replaced_.clear();
}

} // namespace fmu_runtime
