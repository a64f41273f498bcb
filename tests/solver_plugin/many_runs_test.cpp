// Several runs at once in one directory: in one process, and in several.
#include "platform/shared_library.h"
#include "solver_plugin/solver_run.h"
#include "support/archive_writer.h"
#include "support/run_program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <future>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace test_support;
namespace fs = std::filesystem;

constexpr std::size_t runCount = 4;
constexpr long stepCount = 100;

/// A run that is to be told from the others by its results.
struct Wheel {
    fs::path fmu;
    std::string options;
};

std::vector<Wheel> equalWheels() {
    std::vector<Wheel> wheels;
    for (std::size_t i = 1; i <= runCount; ++i) {
        wheels.push_back({fmuPath("scripted"), "-parameter gain " + std::to_string(i)});
    }
    return wheels;
}

std::string replaced(std::string text, const std::string& what, const std::string& by) {
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size())) {
        text.replace(at, what.size(), by);
    }
    return text;
}

/// Different FMUs of one name of their library, made in `directory`.
std::vector<Wheel> differentWheels(const fs::path& directory) {
    std::vector<Wheel> wheels;
    for (const std::string name : {"tyre", "shock_absorber", "scripted"}) {
        const fs::path content = directory / (name + " unpacked");
        const std::string kind = name == "tyre" ? "-fmutype FTIRE" : "";
        SolverRun unpacking(content, fmuPath(name), kind);
        unpacking.begin();
        unpacking.end();
        const fs::path folder = fs::path("binaries") / platform::SharedLibrary::fmiPlatform();
        const std::string suffix = platform::SharedLibrary::suffix();
        const fs::path fmu = directory / (name + ".fmu");
        const auto description =
            replaced(readFile(content / "modelDescription.xml"), "modelIdentifier=\"" + name + '"',
                     "modelIdentifier=\"wheel\"");
        writeArchive(fmu, {{"modelDescription.xml", description},
                           {(folder / ("wheel" + suffix)).generic_string(),
                            readFile(content / folder / (name + suffix))}});
        wheels.push_back({fmu, kind});
    }
    wheels.push_back(wheels.back());
    wheels.back().options = "-parameter gain 7";
    return wheels;
}

/// The log without its times, without what is said of other runs, and without what differs from
/// build to build.
std::string comparableLog(const fs::path& file) {
    std::string result;
    for (const auto& line : lines(readFile(file))) {
        if (line.find("Another run has ") == std::string::npos) {
            result += line.substr(line.find(']')) + '\n';
        }
    }
    return result;
}

struct Output {
    std::string log;
    std::string results;
};

Output outputOf(const fs::path& log, const fs::path& results) {
    return {comparableLog(log), readFile(results)};
}

void expectSame(const Output& output, const Output& expected) {
    EXPECT_EQ(lines(output.results).size(), stepCount + 1U);
    EXPECT_EQ(output.results, expected.results);
    EXPECT_EQ(output.log, expected.log);
}

/// What the run leaves when it has a directory to itself.
Output outputAlone(const Wheel& wheel) {
    const TemporaryDirectory directory;
    SolverRun run(directory.path(), wheel.fmu, wheel.options);
    EXPECT_EQ(run.begin(), 0);
    for (long step = 1; step <= stepCount; ++step) {
        EXPECT_EQ(run.step(static_cast<double>(step) * 1e-3), 0);
    }
    run.end();
    return outputOf(run.logFile(), run.resultsFile());
}

/// The files of the directory itself, in order.
std::vector<std::string> filesIn(const fs::path& directory) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory)) {
        if (entry.is_regular_file() && entry.path().filename() != "modelDescription.xml") {
            names.push_back(entry.path().filename().string());
        }
    }
    std::ranges::sort(names);
    return names;
}

void expectRunsTogetherAsAlone(const std::vector<Wheel>& wheels) {
    const TemporaryDirectory directory;
    std::vector<std::unique_ptr<SolverRun>> runs;
    for (const Wheel& wheel : wheels) {
        runs.push_back(std::make_unique<SolverRun>(directory.path(), wheel.fmu, wheel.options));
        ASSERT_EQ(runs.back()->begin(), 0);
    }
    for (long step = 1; step <= stepCount; ++step) {
        for (const auto& run : runs) {
            ASSERT_EQ(run->step(static_cast<double>(step) * 1e-3), 0);
        }
    }
    for (std::size_t i = 0; i < runs.size(); ++i) {
        runs[i]->end();
        expectSame(outputOf(runs[i]->logFile(), runs[i]->resultsFile()), outputAlone(wheels[i]));
    }
}

TEST(OneProcess, RunsFourEqualTyresAsIfEachWereAlone) {
    expectRunsTogetherAsAlone(equalWheels());
}

TEST(OneProcess, RunsDifferentTyresOfOneIdentifierAsIfEachWereAlone) {
    const TemporaryDirectory directory;
    expectRunsTogetherAsAlone(differentWheels(directory.path()));
}

TEST(OneProcess, GivesTheUsualNamesBackAndSaysWhatItTookInstead) {
    const TemporaryDirectory directory;
    SolverRun first(directory.path(), fmuPath("scripted"));
    SolverRun second(directory.path(), fmuPath("scripted"));
    ASSERT_EQ(first.begin(), 0);
    testing::internal::CaptureStdout();
    ASSERT_EQ(second.begin(), 0);
    const auto console = testing::internal::GetCapturedStdout();
    const std::string moved = narrow(directory / "scripted.2");
    for (const auto& text :
         {"unpacks into " + moved + '\n', moved + ".out and " + moved + ".csv\n"}) {
        EXPECT_EQ(console.find(text), console.rfind(text));
        EXPECT_NE(console.find(text), std::string::npos) << console;
    }
    const auto log = readFile(second.logFile());
    EXPECT_NE(log.find("this run writes scripted.2.out and scripted.2.csv\n"), std::string::npos);
    EXPECT_NE(log.find("this run unpacks into scripted.2\n"), std::string::npos);
    EXPECT_TRUE(fs::exists(directory / "scripted.2" / "modelDescription.xml"));

    first.end();
    ASSERT_EQ(first.begin(), 0) << "the second run of one solver";
    EXPECT_EQ(first.resultsFile(), directory / "scripted.csv");
    first.end();
    second.end();
    EXPECT_EQ(filesIn(directory.path()),
              (std::vector<std::string>{"scripted.2.csv", "scripted.2.out", "scripted.csv",
                                        "scripted.out"}));
}

TEST(OneProcess, KeepsAnInstanceApartByItsName) {
    const TemporaryDirectory directory;
    SolverRun run(directory.path(), fmuPath("scripted"), "-instance \"front left\"");
    SolverRun same(directory.path(), fmuPath("scripted"), "-instance \"front left\"");
    SolverRun plain(directory.path(), fmuPath("scripted"));
    for (SolverRun* each : {&run, &same, &plain}) {
        EXPECT_EQ(each->begin(), 0);
    }
    for (const char* folder : {"front left", "front left.2", ""}) {
        EXPECT_TRUE(fs::exists(directory / folder / "modelDescription.xml")) << folder;
    }
    for (SolverRun* each : {&run, &same, &plain}) {
        each->end();
    }
    EXPECT_EQ(filesIn(directory.path()),
              (std::vector<std::string>{"scripted.csv", "scripted.out", "scripted_front left.2.csv",
                                        "scripted_front left.2.out", "scripted_front left.csv",
                                        "scripted_front left.out"}));
}

/// Runs in processes of their own, at once and in one directory.
class Processes {
  public:
    explicit Processes(const std::vector<Wheel>& wheels) : wheels_(wheels) {}

    /// Lets all run until they end or the time of each is up.
    std::vector<ProgramResult> run(long steps,
                                   const std::vector<std::chrono::milliseconds>& timeouts) {
        std::vector<std::future<ProgramResult>> results;
        for (std::size_t i = 0; i < wheels_.size(); ++i) {
            fs::remove(notesFile(i));
            fs::remove(narrow(notesFile(i)) + ".go");
            RunOptions options;
            options.timeout = timeouts[i];
            results.push_back(std::async(std::launch::async, [this, i, steps, options] {
                return runProgram(programPath("run_driver"),
                                  {narrow(wheels_[i].fmu), narrow(directory_.path()),
                                   narrow(notesFile(i)), std::to_string(steps), wheels_[i].options},
                                  options);
            }));
        }
        letGo(results);
        std::vector<ProgramResult> ended;
        ended.reserve(results.size());
        for (auto& result : results) {
            ended.push_back(result.get());
        }
        return ended;
    }

    /// The lines of notes that were finished.
    [[nodiscard]] std::vector<std::string> notes(std::size_t i) const {
        const auto content = readFile(notesFile(i));
        return lines(content.substr(0, content.rfind('\n') + 1));
    }

    [[nodiscard]] const fs::path& directory() const { return directory_.path(); }

  private:
    [[nodiscard]] fs::path notesFile(std::size_t i) const {
        return notes_ / ("notes" + std::to_string(i));
    }

    /// None may step, and so end, before all have their files.
    void letGo(std::vector<std::future<ProgramResult>>& results) {
        for (std::size_t i = 0; i < results.size(); ++i) {
            while (notes(i).size() < 2 &&
                   results[i].wait_for(std::chrono::milliseconds(1)) != std::future_status::ready) {
            }
        }
        for (std::size_t i = 0; i < results.size(); ++i) {
            writeFile(narrow(notesFile(i)) + ".go", "");
        }
    }

    std::vector<Wheel> wheels_;
    TemporaryDirectory directory_;
    TemporaryDirectory notes_;
};

const std::vector<std::chrono::milliseconds> noLimit(runCount, std::chrono::minutes(2));

void expectProcessesAsAlone(const std::vector<Wheel>& wheels) {
    Processes processes(wheels);
    for (const auto& result : processes.run(stepCount, noLimit)) {
        EXPECT_EQ(result.exitStatus, 0) << result.error;
    }
    std::set<std::string> names;
    for (std::size_t i = 0; i < wheels.size(); ++i) {
        const auto notes = processes.notes(i);
        ASSERT_EQ(notes.size(), stepCount + 2U);
        names.insert(notes[1]);
        expectSame(outputOf(processes.directory() / notes[0], processes.directory() / notes[1]),
                   outputAlone(wheels[i]));
    }
    EXPECT_EQ(names.size(), wheels.size());
}

TEST(FourProcesses, RunEqualTyresAsIfEachWereAlone) {
    expectProcessesAsAlone(equalWheels());
}

TEST(FourProcesses, RunDifferentTyresOfOneIdentifierAsIfEachWereAlone) {
    const TemporaryDirectory directory;
    expectProcessesAsAlone(differentWheels(directory.path()));
}

/// Where the system itself cuts a write when it ends a process: between two pages of the file.
constexpr std::size_t pageSize = 4096;

TEST(FourProcesses, KilledAtAnyMomentLoseNothingFinishedAndLeaveNoLock) {
    const int rounds = canInterrupt ? 25 : 2; // Elsewhere a process takes long to start.
    std::mt19937 random(43);
    std::uniform_int_distribution<int> moment(20, 300);
    Processes processes(equalWheels());
    std::size_t finished = 0;
    for (int round = 0; round < rounds; ++round) {
        std::vector<std::chrono::milliseconds> timeouts;
        for (std::size_t i = 0; i < runCount; ++i) {
            timeouts.emplace_back(moment(random) * (canInterrupt ? 1 : 20));
        }
        processes.run(1'000'000, timeouts);
        std::set<std::string> names;
        for (std::size_t i = 0; i < runCount; ++i) {
            const auto notes = processes.notes(i);
            if (notes.size() > 2) {
                const auto results = readFile(processes.directory() / notes[1]);
                const auto rows = lines(results.substr(0, results.rfind('\n') + 1));
                EXPECT_TRUE(results.ends_with('\n') || results.size() % pageSize == 0);
                EXPECT_GE(rows.size(), notes.size() - 1) << notes[1];
                EXPECT_TRUE(names.insert(notes[1]).second) << notes[1];
                ++finished;
            }
        }
    }
    EXPECT_GT(finished, 0U);
    SolverRun run(processes.directory(), fmuPath("scripted"));
    ASSERT_EQ(run.begin(), 0);
    EXPECT_EQ(run.resultsFile(), processes.directory() / "scripted.csv");
    run.end();
    for (const auto& name : filesIn(processes.directory())) {
        EXPECT_TRUE(name.ends_with(".out") || name.ends_with(".csv")) << name;
    }
}

} // namespace
