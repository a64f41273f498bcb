// workload_run FMU LOOP STEPS [COUNT]: runs a workload by itself, or COUNT of them side by side, for
// profilers and for the figures of a whole process.
// workload_run FMU load|unzip_and_parse: only loads it, or does what loading cannot do without.
#include "bench/step_loop.h"
#include "bench/unzip.h"
#include "fmi_tools.h"
#include "platform/files.h"
#include "support/files.h"
#include "support/process_memory.h"

#include <pugixml.hpp>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point begin) {
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

void printMemory() {
    std::fprintf(stderr, "memory %.1f MB at the peak\n",
                 static_cast<double>(test_support::peakMemory()) * 1e-6);
}

void printLoad(double seconds) {
    std::fprintf(stderr, "load   %.3f ms\n", seconds * 1e3);
    printMemory();
}

void load(const fs::path& fmu, const fs::path& directory) {
    const auto begin = Clock::now();
    FmiToolsInstance* instance = fmiToolsLoadFmu(
        platform::narrowPath(fmu).c_str(), platform::narrowPath(directory / "fmu").c_str(), "");
    const double seconds = secondsSince(begin);
    if (instance == nullptr) {
        throw std::runtime_error("Cannot load " + platform::narrowPath(fmu));
    }
    printLoad(seconds);
    fmiToolsCleanup(instance);
}

void unzipAndParse(const fs::path& fmu, const fs::path& directory) {
    pugi::xml_document document;
    const auto begin = Clock::now();
    bench::unzip(fmu, directory);
    const fs::path description = directory / "modelDescription.xml";
    const auto result = document.load_file(description.c_str());
    const double seconds = secondsSince(begin);
    if (!result) {
        throw std::runtime_error("Cannot parse the model description");
    }
    std::fprintf(stderr, "text   %.1f MB\n",
                 static_cast<double>(fs::file_size(description)) * 1e-6);
    printLoad(seconds);
}

void runLoop(const fs::path& fmu, const fs::path& directory, const char* loopName, long steps,
             long count) {
    const bench::Workload workload = bench::openWorkload(fmu, directory / "unpacked");
    std::vector<std::unique_ptr<bench::StepLoop>> loops;
    for (long number = 1; number <= count; ++number) {
        const fs::path own = directory / std::to_string(number);
        fs::create_directory(own);
        loops.push_back(bench::makeStepLoop(loopName, workload, own));
    }
    const auto begin = Clock::now();
    for (long step = 1; step <= steps; ++step) {
        for (const auto& loop : loops) {
            loop->step(static_cast<double>(step) * 1e-3);
        }
    }
    const double seconds = secondsSince(begin);
    std::fprintf(stderr, "steps  %.3f s, %.3f us each\n", seconds,
                 steps > 0 ? seconds / static_cast<double>(steps) * 1e6 : 0.0);
    printMemory();
}

int run(int argc, char** argv) {
    const test_support::TemporaryDirectory directory;
    const std::string_view task = argc > 2 ? argv[2] : "";
    if (argc == 3 && task == "load") {
        load(platform::nativePath(argv[1]), directory.path());
    } else if (argc == 3 && task == "unzip_and_parse") {
        unzipAndParse(platform::nativePath(argv[1]), directory.path());
    } else if (argc == 4 || argc == 5) {
        runLoop(platform::nativePath(argv[1]), directory.path(), argv[2],
                std::strtol(argv[3], nullptr, 10),
                argc == 5 ? std::strtol(argv[4], nullptr, 10) : 1);
    } else {
        std::fprintf(stderr, "Usage: workload_run FMU runtime|plugin|limit|plain STEPS [COUNT]\n"
                             "       workload_run FMU load|unzip_and_parse\n");
        return 2;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "workload_run: %s\n", error.what());
        return 1;
    }
}
