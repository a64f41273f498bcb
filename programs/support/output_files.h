#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace program_support {

/// Makes way for a file that the program is going to write: one that an earlier run left there is
/// removed, so that nobody takes it for this run's if that ends early. `what` names the file, such
/// as "results file", and `option` chooses another.
///
/// @throws InputError with the system's reason when there cannot be such a file.
/// @throws std::runtime_error for what would hang or send the content elsewhere: a pipe, a socket,
///         a link to nothing.
void clearOutputFile(const std::string& path, const std::string& what, const std::string& option);

/// Removes a file if it is one; what is not stays, and so does what cannot be removed or what a run
/// is writing to.
void removeFormerFile(const std::filesystem::path& file);

/// Writes a whole file.
///
/// @throws std::runtime_error with the system's reason when that fails, and as clearOutputFile().
void writeOutputFile(const std::string& path, std::string_view content, const std::string& what,
                     const std::string& option);

} // namespace program_support
