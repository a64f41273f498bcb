#pragma once

#include <functional>
#include <string>

namespace cosim_host {

/// A value that changes over the run and can be looked at any time.
struct Signal {
    std::string name;
    std::string unit; ///< "-" where none is known.
    std::function<double()> value;
};

} // namespace cosim_host
