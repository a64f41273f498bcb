#include "programs/support/temporary_directory.h"

#include "platform/files.h"
#include "programs/support/input_error.h"

namespace program_support {

platform::TemporaryDirectory makeTemporaryDirectory(std::string_view prefix) {
    try {
        return platform::TemporaryDirectory(prefix);
    } catch (const std::filesystem::filesystem_error& error) {
        throw InputError("cannot make a temporary directory in '" +
                         platform::narrowPath(error.path1()) + "': " + error.code().message() +
                         "; set TMPDIR (TEMP on Windows) to one for you");
    }
}

} // namespace program_support
