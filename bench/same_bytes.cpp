#include "bench/same_bytes.h"

#include "bench/step_loop.h"
#include "support/files.h"

#include <stdexcept>
#include <string>

namespace bench {

namespace {

void runSteps(std::string_view loop, const Workload& workload,
              const std::filesystem::path& directory) {
    constexpr int steps = 200;
    const auto steppedLoop = makeStepLoop(loop, workload, directory);
    for (int step = 1; step <= steps; ++step) {
        steppedLoop->step(step * 1e-3);
    }
}

std::string withoutTimeStamps(const std::string& log) {
    std::string text;
    for (const std::string& line : test_support::lines(log)) {
        text += line.substr(line.find(']') + 1) + '\n';
    }
    return text;
}

/// The runtime's log begins with the lines of the initialisation and ends with those of the
/// clean-up; its results begin with a header. The limit writes the steps alone.
void requireContains(const std::string& whole, const std::string& part, const std::string& file) {
    if (part.empty() || whole.find(part) == std::string::npos) {
        throw std::runtime_error("The runtime and the limit wrote different bytes into " + file);
    }
}

} // namespace

void requireSameBytes(const Workload& workload, const std::filesystem::path& directory) {
    std::filesystem::create_directories(directory);
    runSteps(loops::runtime, workload, directory);
    runSteps(loops::limit, workload, directory);
    const auto read = [&](const char* name) { return test_support::readFile(directory / name); };
    requireContains(withoutTimeStamps(read("runtime.out")), withoutTimeStamps(read("limit.out")),
                    workload.identifier + ".out");
    requireContains(read("runtime.csv"), read("limit.csv"), workload.identifier + ".csv");
}

} // namespace bench
