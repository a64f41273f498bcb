/// The formatter of the results file's numbers agrees with the C library for every bit pattern.
#include "fmu_runtime/number_text.h"

#include "fuzz/fuzz_support.h"

#include <array>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes bytes(data, size);
    while (!bytes.empty()) {
        const auto value = bytes.take<double>();
        std::array<char, fmu_runtime::realTextSize> text;
        const char* end = fmu_runtime::writeReal(text.data(), value);
        std::array<char, 64> expected;
        const int length = std::snprintf(expected.data(), expected.size(), "%.16e", value);
        fuzz::require(std::string_view(text.data(), end) ==
                          std::string_view(expected.data(), static_cast<std::size_t>(length)),
                      "a number is written as by printf");
    }
    return 0;
}
