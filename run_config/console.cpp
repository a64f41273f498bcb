#include "run_config/console.h"

#include <cstdio>
#include <string>

namespace run_config {

namespace {

void printTo(std::FILE* stream, std::initializer_list<std::string_view> parts) {
    std::string line;
    for (const auto part : parts) {
        line += part;
    }
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stream);
    std::fflush(stream);
}

} // namespace

void printLine(std::initializer_list<std::string_view> parts) {
    printTo(stdout, parts);
}

void printErrorLine(std::initializer_list<std::string_view> parts) {
    printTo(stderr, parts);
}

} // namespace run_config
