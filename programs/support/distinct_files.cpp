#include "programs/support/distinct_files.h"

#include "platform/files.h"
#include "programs/support/input_error.h"

#include <cstddef>
#include <filesystem>
#include <system_error>

namespace program_support {

namespace fs = std::filesystem;

namespace {

bool isDevice(const fs::path& file) {
    std::error_code error;
    return fs::exists(file, error) && !fs::is_regular_file(file, error);
}

bool isSameFile(const std::string& first, const std::string& second) {
    if (first.empty() || second.empty()) {
        return false;
    }
    const auto one = platform::nativePath(first);
    const auto other = platform::nativePath(second);
    std::error_code error;
    if (isDevice(one) || isDevice(other)) {
        return false;
    }
    if (fs::exists(one, error) && fs::exists(other, error)) {
        return fs::equivalent(one, other, error);
    }
    return platform::isSamePath(fs::weakly_canonical(fs::absolute(one, error), error),
                                fs::weakly_canonical(fs::absolute(other, error), error));
}

void requireDistinct(const RunFile& output, const RunFile& other) {
    if (isSameFile(output.path, other.path)) {
        throw InputError(output.what + " '" + output.path + "' would overwrite " + other.what +
                         "; choose another by " + output.option);
    }
}

} // namespace

void requireDistinctFiles(const std::vector<RunFile>& inputs, const std::vector<RunFile>& outputs) {
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        for (const RunFile& input : inputs) {
            requireDistinct(outputs[i], input);
        }
        for (std::size_t j = 0; j < i; ++j) {
            requireDistinct(outputs[i], outputs[j]);
        }
    }
}

} // namespace program_support
