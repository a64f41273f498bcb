#pragma once

#include <string>

namespace program_support {

/// The bytes of a file that the user gave.
///
/// @throws InputError unless there is a file at `path`, or a pipe or device, that can be read. None,
///         a directory, a lack of rights and a file that another program uses are told apart.
std::string fileContent(const std::string& path);

/// fileContent() of a text.
///
/// @throws InputError as fileContent(), and when there is a zero byte in it: no text in UTF-8 has
///         one.
std::string textFileContent(const std::string& path);

/// @throws InputError as fileContent(), and for a pipe or device.
void requireReadableFile(const std::string& path);

/// @throws InputError as requireReadableFile(), and when the file is visibly no archive: it is
///         empty, does not begin like one, or its end is missing.
void requireArchive(const std::string& path);

} // namespace program_support
