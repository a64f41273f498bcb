#pragma once

#include <stdexcept>

namespace program_support {

/// What the user gave cannot be used: an option, a file, a value. Its text is one line that names
/// the thing and says what to do; a program prints it on standard error and ends with
/// `inputErrorStatus`.
struct InputError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Exit status after an InputError.
constexpr int inputErrorStatus = 2;

} // namespace program_support
