// Memory and open files over many cycles and many steps. The environment variable ENDURANCE_FACTOR
// multiplies both.
#include "fmu_runtime/loaded_fmu.h"
#include "support/process_memory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace {

using namespace test_support;

const bool isWindows = std::filesystem::path::preferred_separator == '\\';

long factor() {
    const char* text = std::getenv("ENDURANCE_FACTOR");
    return text != nullptr ? std::strtol(text, nullptr, 10) : 1;
}

/// 0 on Windows, which has no list of them; the one that Wine shows has Wine's own, too.
std::ptrdiff_t openFiles() {
    return isWindows ? 0
                     : std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                                     std::filesystem::directory_iterator());
}

/// Does `work` `count` times after a fifth of it as warm-up; neither memory nor files may pile up.
template <typename Work>
void expectConstantUse(long count, Work work) {
    std::size_t before = 0;
    std::ptrdiff_t files = 0;
    for (long index = -count / 5; index < count; ++index) {
        if (index == 0) {
            before = peakMemory();
            files = openFiles();
        }
        work(index);
    }
    constexpr std::size_t allowed = 1 << 20;
    if (MEMORY_IS_MEASURABLE) {
        EXPECT_GT(before, 0U);
        EXPECT_LT(peakMemory() - before, allowed);
    }
    EXPECT_EQ(openFiles(), files);
}

TEST(Endurance, OfLoadingRunningAndCleaningUp) {
    const TemporaryDirectory directory;
    const auto script = directory / (isWindows ? "fmuclean.bat" : "fmuclean.sh");
    writeFile(script, "");
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    const long cycles = isWindows ? 20 : 200; // Wine takes its time to call the script.
    const std::string unpacked = narrow(directory / "unpacked");
    const auto load = [&] {
        return fmiToolsLoadFmu(narrow(fmuPath("scripted")).c_str(), unpacked.c_str(),
                               narrow(directory / "").c_str());
    };
    // The C++ library that MinGW links into a DLL takes 72 KB when the DLL is loaded and never
    // gives them back: there the FMU's stays loaded, and each cycle loads it once more.
    FmiToolsInstance* keeper = isWindows ? load() : nullptr;
    expectConstantUse(cycles * factor(), [&](long) {
        FmiToolsInstance* fmu = load();
        ASSERT_NE(fmu, nullptr);
        fmiToolsSetLogFile(fmu, narrow(directory / "run.out").c_str());
        fmiToolsSetResultsFile(fmu, narrow(directory / "run.csv").c_str());
        ASSERT_EQ(fmiToolsInitialize(fmu), 0);
        for (const double time : {0.1, 0.2, 0.3}) {
            ASSERT_EQ(fmiToolsSimulateToT(fmu, time), 0);
        }
        fmiToolsCleanup(fmu);
    });
    fmiToolsCleanup(keeper);
    // What stays is the unpacked FMU, once.
    std::ptrdiff_t entries = std::distance(std::filesystem::directory_iterator(directory.path()),
                                           std::filesystem::directory_iterator());
    EXPECT_EQ(entries, 4);
}

TEST(Endurance, OfStepping) {
    LoadedFmu fmu("scripted");
    const char* nowhere = isWindows ? "NUL" : "/dev/null";
    fmiToolsSetResultsFile(fmu, nowhere);
    fmiToolsSetLogFile(fmu, nowhere);
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    long step = 0;
    double x = 0.0;
    expectConstantUse(20'000 * factor(), [&](long) {
        ASSERT_EQ(fmiToolsSetRealVariableValue(fmu, "u", 1.0), 0);
        ASSERT_EQ(fmiToolsSimulateToT(fmu, static_cast<double>(++step) * 1e-3), 0);
        ASSERT_EQ(fmiToolsGetRealVariableValue(fmu, "x", &x), 0);
    });
    EXPECT_NEAR(x, static_cast<double>(step) * 1e-3, 1e-6);
}

} // namespace
