#pragma once

namespace fmi_import {

/// Runs the body of an exported function: nothing that C++ throws crosses the C border. What failed
/// has been logged where it is known; running out of memory is answered with `failure` alone, since
/// composing a message may need memory too.
template <typename Result, typename Body>
Result guarded(Result failure, Body&& body) noexcept {
    try {
        return body();
    } catch (...) {
        return failure;
    }
}

} // namespace fmi_import
