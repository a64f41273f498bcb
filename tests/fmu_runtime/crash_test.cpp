// What is on disk when the process ends without a warning.
#include "fmu_runtime/loaded_fmu.h"
#include "support/run_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using namespace test_support;
using testing::EndsWith;

class Driver {
  public:
    ProgramResult run(const RunOptions& options) const {
        return runProgram(programPath("step_driver"),
                          {narrow(fmuPath("scripted")), narrow(directory_.path())}, options);
    }

    std::string file(const char* name) const { return readFile(directory_ / name); }

  private:
    TemporaryDirectory directory_;
};

bool isStepLine(const std::string& line) {
    return line.find("Attempting step to t=") != std::string::npos;
}

TEST(Fmu, ThatEndsTheProcessIsNamedByTheLastLine) {
    struct {
        const char* script;
        const char* lastLine;
        std::size_t rows; // The header included.
    } const cases[] = {
        {"doStep@3=abort", "[OK] Attempting step to t=3.0000000000000001e-03", 3},
        {"doStep@1=exit 7", "[OK] Attempting step to t=1.0000000000000000e-03", 1},
        {"getReal(y)@2=abort", "[OK] Attempting step to t=2.0000000000000000e-03", 2},
        {"setupExperiment=abort", "[OK] Setting up experiment", 1},
        {"enterInitializationMode=abort", "[OK] Entering initialisation mode", 1},
        {"exitInitializationMode=exit 0", "[OK] Exiting initialisation mode", 1},
    };

    for (const auto& c : cases) {
        const Driver driver;
        RunOptions options;
        options.environment = {{"SCRIPTED_FMU_SCRIPT", c.script}};
        driver.run(options);
        EXPECT_THAT(driver.file("run.out"), EndsWith(std::string(c.lastLine) + "\n")) << c.script;
        EXPECT_EQ(lines(driver.file("run.csv")).size(), c.rows) << c.script;
        EXPECT_THAT(driver.file("run.csv"), EndsWith("\n")) << c.script;
    }
}

/// Where the system itself cuts a write when it ends a process: between two pages of the file.
constexpr std::size_t pageSize = 4096;

/// The whole lines of a file that may end in the beginning of one only at a page's end.
std::vector<std::string> wholeLines(const std::string& content) {
    const auto end = content.rfind('\n') + 1;
    EXPECT_TRUE(end == content.size() || content.size() % pageSize == 0) << content.substr(end);
    return lines(content.substr(0, end));
}

TEST(Process, KilledAtAnyMomentLosesNoFinishedCall) {
    const int kills = canInterrupt ? 200 : 10; // Elsewhere a process takes long to start.
    std::mt19937 random(42);
    std::uniform_int_distribution<int> moment(5, 150);
    std::size_t finishedInAll = 0;
    for (int kill = 0; kill < kills; ++kill) {
        const Driver driver;
        RunOptions options;
        options.timeout = std::chrono::milliseconds(moment(random));
        driver.run(options);
        const auto rows = wholeLines(driver.file("run.csv"));
        const auto log = wholeLines(driver.file("run.out"));
        const auto finished = wholeLines(driver.file("progress"));
        finishedInAll += finished.size();
        if (!finished.empty()) {
            EXPECT_GE(rows.size(), finished.size() + 1); // The header.
            EXPECT_EQ(std::ranges::count(rows.back(), ','), std::ranges::count(rows.front(), ','));
            EXPECT_GE(std::ranges::count_if(log, isStepLine), finished.size());
        }
    }
    EXPECT_GT(finishedInAll, 0U);
}

} // namespace
