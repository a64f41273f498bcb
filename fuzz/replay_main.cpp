/// Runs a fuzz target once over every file of the directories given, without a fuzzer.
#include "fuzz/fuzz_support.h"

#include <iterator>
#include <vector>

int main(int argc, char** argv) {
    std::size_t inputs = 0;
    for (const char* directory : std::span(argv, static_cast<std::size_t>(argc)).subspan(1)) {
        for (const auto& entry : std::filesystem::directory_iterator(directory)) {
            std::ifstream file(entry.path(), std::ios::binary);
            const std::vector<char> content{std::istreambuf_iterator<char>(file), {}};
            // Named before it runs: a crash leaves the culprit's name as the last line.
            std::fprintf(stderr, "%s\n", entry.path().c_str());
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.data()),
                                   content.size());
            ++inputs;
        }
    }
    std::fprintf(stderr, "%zu inputs\n", inputs);
    return inputs > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
