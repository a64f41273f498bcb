#pragma once

#include <stdexcept>

namespace data_exchange {

/// What `pointer` points to. The host is expected to hand over an object wherever it is asked for
/// one; one that does not makes the operation fail instead of the process.
///
/// @throws std::logic_error for a null pointer
template <typename T>
T& required(T* pointer) {
    if (pointer == nullptr) {
        throw std::logic_error("an object of the host is missing");
    }
    return *pointer;
}

} // namespace data_exchange
