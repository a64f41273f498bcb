#pragma once

#include "platform/path_style.h"

#include <string>
#include <string_view>

/// Where the files of a run go. Rules about text, for either style of paths.
namespace run_config {

/// Directory of the FMU's clean-up script, with its closing separator: "FMITools" beside the file
/// `modelFilePath`, or below it when it names no directory.
std::string scriptDirectoryFor(const platform::PathStyle& style, std::string_view modelFilePath);

/// Directory of the log file and of the results file: the value of the environment variable
/// "TEST_OUTPUT_PATH" where it is set, even to nothing, else `workingDirectory`.
std::string outputDirectoryFor(const std::string& workingDirectory);

/// Path of the log file and of the results file without their endings ".out" and ".csv": the FMU's
/// file name in `outputDirectory`, without what follows the last dot.
///
/// The last dot is looked for in the whole path, the directory included. An FMU path without any
/// directory loses its last character before; as a rule that is the end of an ending which goes
/// anyway. Users' scripts find the files by these names.
std::string runFileStem(const platform::PathStyle& style, std::string_view outputDirectory,
                        std::string_view fmuPath);

} // namespace run_config
