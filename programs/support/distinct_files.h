#pragma once

#include <string>
#include <vector>

namespace program_support {

/// A file of a run, for requireDistinctFiles().
struct RunFile {
    std::string path;   ///< Empty: there is none.
    std::string what;   ///< Such as "the results file".
    std::string option; ///< What chooses another place, such as "--output-file".
};

/// To be asked before anything is written: no output may be an input or another output. Files that
/// are there are compared by their identity, so that no link and no other spelling hides one; others
/// by their path. Devices such as /dev/null may be several outputs at once.
///
/// @throws InputError naming the output and what it would overwrite.
void requireDistinctFiles(const std::vector<RunFile>& inputs, const std::vector<RunFile>& outputs);

} // namespace program_support
