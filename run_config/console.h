#pragma once

#include <initializer_list>
#include <string_view>

namespace run_config {

/// Prints the parts, joined, as one line on standard output, in one write, and flushes.
void printLine(std::initializer_list<std::string_view> parts);

/// printLine() on standard error.
void printErrorLine(std::initializer_list<std::string_view> parts);

} // namespace run_config
