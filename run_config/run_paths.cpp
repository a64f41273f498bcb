#include "solver_plugin/run_paths.h"

namespace solver_plugin {

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

std::string runFileStem(const platform::PathStyle& style, std::string_view outputDirectory,
                        std::string_view fmuPath) {
    std::string path = platform::withTrailingSeparator(style, outputDirectory);
    path += runFileName(style, fmuPath);
    return path.substr(0, path.rfind('.'));
}

} // namespace solver_plugin
