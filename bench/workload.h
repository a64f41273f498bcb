#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// A Real variable of a workload.
struct Variable {
    std::string name;
    unsigned reference; ///< Value reference (FMI 2.0 section 2.1.7).
};

/// An FMU to measure with and what a step of full duty touches of it, in the order of the model
/// description.
struct Workload {
    std::filesystem::path archive;
    std::filesystem::path directory; ///< Where the FMU is unpacked.
    std::string identifier;          ///< File name of the FMU's binary, without its suffix.
    std::string guid;
    std::vector<Variable> inputs;
    std::vector<Variable> outputs;
    std::vector<Variable> columns; ///< Every variable that is not local: the results file's.
};

/// Unpacks the FMU `archive` into `directory` and reads what it has.
///
/// @throws std::runtime_error naming the file that cannot be read.
Workload openWorkload(const std::filesystem::path& archive, const std::filesystem::path& directory);

/// What input number `input` is set to in the step to `time` (seconds): a number with all its
/// digits, for the price of a multiplication.
inline double inputValue(std::size_t input, double time) {
    return (static_cast<double>(input) + 0.1) * time;
}

} // namespace bench
