#pragma once

#include <stdexcept>

namespace program_support {

/// What the user gave cannot be used: an option, a file, a value. Its text is one line that names
/// the thing and says what to do; exitStatusOf() prints it.
struct InputError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace program_support
