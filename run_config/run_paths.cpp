#include "run_config/run_paths.h"

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
                        std::string_view fmuPath) {
    std::string path = platform::withTrailingSeparator(style, outputDirectory);
    path += runFileName(style, fmuPath);
    return path.substr(0, path.rfind('.'));
}

} // namespace run_config
