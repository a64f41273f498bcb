// An FMU whose threads log while everything else happens. Windows lets no library wait for its threads
// when it is unloaded, so only here can an FMU do that and be sound.
#include "fmu_runtime/loaded_fmu.h"
#include "platform/shared_library.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace test_support;

TEST(ThreadOfTheFmu, LogsBetweenAllCallsAndWhenItsInstanceWasFreed) {
    platform::SharedLibrary library;
    LoadedFmu fmu("scripted");
    ASSERT_TRUE(library.open(narrow(fmu.library("scripted")))); // Keeps the code to the end.
    fmu.script("exitInitializationMode=logOn ok c first; exitInitializationMode=logOn ok c second");
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    for (int step = 1; step <= 200; ++step) {
        ASSERT_EQ(fmiToolsSimulateToT(fmu, step * 0.1), 0);
    }
    const auto own = [&] {
        auto log = fmu.log();
        std::erase_if(log, [](const auto& line) { return line.starts_with("[FMU instance][c]"); });
        return log;
    };
    EXPECT_EQ(std::ranges::count_if(
                  own(), [](const auto& line) { return line.find("Attempting") != line.npos; }),
              200);
    const auto second = fmu.logFile().string() + "2";
    fmiToolsSetLogFile(fmu, second.c_str());
    fmu.cleanUp();
    const auto atTheEnd = readFile(second);
    EXPECT_THAT(atTheEnd, testing::EndsWith("\n"));
    EXPECT_TRUE(library.close());
    EXPECT_EQ(readFile(second), atTheEnd);
    for (const auto& line : own()) {
        EXPECT_THAT(line, testing::StartsWith("[FMITools][None][OK] "));
    }
}

} // namespace
