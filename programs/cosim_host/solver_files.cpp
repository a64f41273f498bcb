#include "programs/cosim_host/solver_files.h"

#include "platform/files.h"
#include "reference_host/log_sink.h"
#include "run_config/console.h"
#include "run_config/run_paths.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace cosim_host {

namespace {

/// Whether `taken` is `wanted` with a number, as solvers name a further run of a model.
bool isNumbered(const std::string& wanted, const std::string& taken) {
    const auto dot = wanted.rfind('.');
    const auto ending = wanted.substr(dot);
    if (taken.size() < wanted.size() + 2 || !taken.starts_with(wanted.substr(0, dot) + '.') ||
        !taken.ends_with(ending)) {
        return false;
    }
    const auto number = taken.substr(dot + 1, taken.size() - wanted.size() - 1);
    return number.find_first_not_of("0123456789") == std::string::npos;
}

bool follow(const std::vector<SolverFiles*>& files, std::filesystem::path SolverFiles::*file,
            std::string_view announcement, const std::string& text) {
    if (!text.starts_with(announcement)) {
        return false;
    }
    const std::string taken = text.substr(announcement.size());
    for (SolverFiles* each : files) {
        if (isNumbered(platform::narrowPath(each->*file), taken)) {
            each->*file = platform::nativePath(taken);
        }
    }
    return true;
}

} // namespace

SolverFiles solverFiles(const std::string& workingDirectory,
                        const std::vector<std::string>& arguments) {
    std::string instance;
    for (std::size_t i = 0; i + 1 < arguments.size(); ++i) {
        if (arguments[i] == "-instance" && !arguments[i + 1].starts_with('-')) {
            instance = arguments[i + 1];
        }
    }
    const std::string stem = run_config::runFileStem(
        platform::nativePaths(), run_config::outputDirectoryFor(workingDirectory),
        arguments.empty() ? "" : arguments.front(), instance);
    return {platform::nativePath(stem + ".out"), platform::nativePath(stem + ".csv")};
}

FollowedFiles::FollowedFiles(std::vector<SolverFiles*> files, std::function<void()> onChange) {
    reference_host::setLogSink([files = std::move(files), onChange = std::move(onChange)](
                                   Logger::Level /*level*/, const std::string& text) {
        if (follow(files, &SolverFiles::log, "FMISolver log file: ", text) ||
            follow(files, &SolverFiles::results, "FMISolver results file: ", text)) {
            onChange();
        } else {
            run_config::printLine({text});
        }
    });
}

FollowedFiles::~FollowedFiles() {
    reference_host::setLogSink({});
}

} // namespace cosim_host
