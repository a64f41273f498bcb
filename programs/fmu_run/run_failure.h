#pragma once

#include <stdexcept>

namespace fmu_run {

/// The FMU or its library failed, as opposed to what the user gave. Its text says what failed.
struct RunFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace fmu_run
