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
/// file name in `outputDirectory`, without what follows the last dot, and "_" with `instance` unless
/// that is empty.
///
/// The last dot is looked for in the whole path, the directory included. An FMU path without any
/// directory loses its last character before; as a rule that is the end of an ending which goes
/// anyway. Users' scripts find the files by these names.
std::string runFileStem(const platform::PathStyle& style, std::string_view outputDirectory,
                        std::string_view fmuPath, std::string_view instance = {});

/// The place of a run among those that use the same names at the same time: `file` for the first,
/// "MODEL.2.out" instead of "MODEL.out" for the second, and so on.
std::string numberedFile(const std::string& file, unsigned number);

/// Where the FMU of a run is unpacked.
struct UnpackDirectories {
    std::string first;
    std::string others; ///< With ".2", ".3" and so on at its end where the first is in use.
};

/// Into `workingDirectory`, others into folders below it that are called like the run's files; with
/// an `instance`, which is no empty text, into folders of that name.
UnpackDirectories unpackDirectories(const platform::PathStyle& style,
                                    const std::string& workingDirectory, const std::string& stem,
                                    const std::string& instance);

} // namespace run_config
