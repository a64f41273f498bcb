#include "run_config/run_paths.h"

#include <algorithm>
#include <cstdlib>

namespace run_config {

namespace {

std::string_view runFileName(const platform::PathStyle& style, std::string_view fmuPath) {
    const auto name = platform::fileNameOf(style, fmuPath);
    const bool hasDirectory = name.size() < fmuPath.size();
    return hasDirectory ? name : name.substr(0, name.size() - 1);
}

} // namespace

std::string scriptDirectoryFor(const platform::PathStyle& style, std::string_view modelFilePath) {
    return std::string(platform::directoryOf(style, modelFilePath)) + "/FMITools/";
}

std::string outputDirectoryFor(const std::string& workingDirectory) {
    const char* elsewhere = std::getenv("TEST_OUTPUT_PATH");
    return elsewhere == nullptr ? workingDirectory : elsewhere;
}

std::string runFileStem(const platform::PathStyle& style, std::string_view outputDirectory,
                        std::string_view fmuPath, std::string_view instance) {
    std::string path = platform::withTrailingSeparator(style, outputDirectory);
    path += runFileName(style, fmuPath);
    path.erase(std::min(path.rfind('.'), path.size()));
    return instance.empty() ? path : path.append("_").append(instance);
}

std::string numberedFile(const std::string& file, unsigned number) {
    std::string numbered = file;
    if (number > 1) {
        numbered.insert(file.rfind('.'), '.' + std::to_string(number));
    }
    return numbered;
}

UnpackDirectories unpackDirectories(const platform::PathStyle& style,
                                    const std::string& workingDirectory, const std::string& stem,
                                    const std::string& instance) {
    const std::string parent = platform::withTrailingSeparator(style, workingDirectory);
    if (!instance.empty()) {
        return {parent + instance, parent + instance};
    }
    const auto model = platform::fileNameOf(style, stem);
    return {workingDirectory, parent + (model.empty() ? "fmu" : std::string(model))};
}

} // namespace run_config
