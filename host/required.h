#pragma once

#include <stdexcept>
#include <string>

namespace host {

/// What `pointer` points to. A host is expected to hand over an object wherever it is asked for one;
/// one that does not makes the operation fail instead of the process.
///
/// @param name what the object is, for the error's text
/// @throws std::logic_error for a null pointer
template <typename T>
T& required(T* pointer, const char* name) {
    if (pointer == nullptr) {
        throw std::logic_error(std::string("the host gave no ") + name);
    }
    return *pointer;
}

} // namespace host
