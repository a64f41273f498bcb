// workload_run FMU LOOP STEPS: runs a workload by itself, for profilers and for the figures of a
// whole process.
#include "bench/step_loop.h"
#include "platform/files.h"
#include "platform/process_memory.h"
#include "support/files.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point begin) {
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

void run(const std::filesystem::path& fmu, const char* loopName, long steps) {
    const test_support::TemporaryDirectory directory;
    const bench::Workload workload = bench::openWorkload(fmu, directory / "unpacked");
    const std::size_t memoryBefore = platform::peakMemory();
    const auto beginOfLoad = Clock::now();
    const auto loop = bench::makeStepLoop(loopName, workload, directory.path());
    const double loadTime = secondsSince(beginOfLoad);
    const auto beginOfSteps = Clock::now();
    for (long step = 1; step <= steps; ++step) {
        loop->step(static_cast<double>(step) * 1e-3);
    }
    const double stepTime = secondsSince(beginOfSteps);
    std::fprintf(stderr, "load   %.3f ms\n", loadTime * 1e3);
    std::fprintf(stderr, "steps  %.3f s, %.3f us each\n", stepTime,
                 steps > 0 ? stepTime / static_cast<double>(steps) * 1e6 : 0.0);
    std::fprintf(stderr, "memory %.1f MB at the peak, %.1f MB before the load\n",
                 static_cast<double>(platform::peakMemory()) * 1e-6,
                 static_cast<double>(memoryBefore) * 1e-6);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "Usage: workload_run FMU runtime|plugin|limit|plain STEPS\n");
        return 2;
    }
    try {
        run(platform::nativePath(argv[1]), argv[2], std::atol(argv[3]));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "workload_run: %s\n", error.what());
        return 1;
    }
    return 0;
}
