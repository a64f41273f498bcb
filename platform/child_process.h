#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Absolute path of the program called `name` (without the ending of programs): in the first
/// directory of PATH that has it. Entries of PATH that are not absolute do not count, nor does the
/// current directory, whatever the system adds to PATH: who plants a file there must not get it
/// run. Nothing when there is none.
std::optional<std::string> findProgram(std::string_view name);

/// Runs a program and waits for its end. No command interpreter sees the arguments.
///
/// `arguments` begin with the program's path, which is not searched for. Its standard streams are
/// this process's. Returns its exit status, which is not 0 after a crash either; nothing when it
/// could not be started.
std::optional<int> runProgram(const std::vector<std::string>& arguments);

/// What is different about programs from system to system.
struct ProgramPlaces {
    char pathSeparator; ///< Between the entries of PATH.
    const char* suffix; ///< Of the files of programs.
};

extern const ProgramPlaces programPlaces;

} // namespace platform
