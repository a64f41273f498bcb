// What a communication step and a load cost beside the FMU, as ratios within one run. The options
// are those of Google Benchmark, and --rounds=N for how often each loop has its turn.
#include "bench/ratio_report.h"
#include "bench/same_bytes.h"
#include "bench/step_loop.h"
#include "fmi_tools.h"
#include "platform/files.h"
#include "platform/stream_redirection.h"
#include "support/files.h"
#include "support/run_program.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;
using bench::Workload;

// Turns so short that few of them are interrupted, and as many as make up the whole workload.
constexpr int usualRounds = 400;
constexpr int loads = 15;

/// A loop that goes on from where its last turn ended.
struct RunningLoop {
    std::unique_ptr<bench::StepLoop> loop;
    int steps = 0;

    void step() { loop->step(++steps * 1e-3); }
};

/// The runtime's own lines on the standard streams, kept out of the report.
class Quiet {
  public:
    explicit Quiet(const fs::path& directory)
        : output_(stdout, platform::narrowPath(directory / "stdout.txt")),
          error_(stderr, platform::narrowPath(directory / "stderr.txt")) {}

  private:
    platform::StreamRedirection output_;
    platform::StreamRedirection error_;
};

/// Everything that is measured, with its files in one temporary directory.
class Measurements {
  public:
    explicit Measurements(int rounds) : rounds_(rounds) {}

    ~Measurements() {
        const Quiet quiet(directory_.path());
        loops_.clear();
        for (FmiToolsInstance* instance : lookupInstances_) {
            fmiToolsCleanup(instance);
        }
    }

    Measurements(const Measurements&) = delete;
    Measurements& operator=(const Measurements&) = delete;
    Measurements(Measurements&&) = delete;
    Measurements& operator=(Measurements&&) = delete;

    void addSteps(const std::string& name, int stepsOfRound);
    void addLookup(const std::string& title, const std::string& name);

  private:
    const Workload& workload(const std::string& name) {
        const auto found = workloads_.find(name);
        return found != workloads_.end()
                   ? found->second
                   : workloads_[name] = bench::openWorkload(
                         test_support::fmuPath("workload_" + name), directory_ / name);
    }

    /// A directory of its own for each load.
    fs::path freshDirectory() { return directory_ / std::to_string(++directories_); }

    FmiToolsInstance* load(const std::string& name);
    void addStepLoop(const std::string& name, std::string_view loopName, int stepsOfRound);

    int rounds_;
    int directories_ = 0;
    test_support::TemporaryDirectory directory_;
    std::map<std::string, Workload> workloads_;
    std::map<std::string, RunningLoop> loops_;
    std::vector<FmiToolsInstance*> lookupInstances_;
};

void Measurements::addSteps(const std::string& name, int stepsOfRound) {
    {
        const Quiet quiet(directory_.path());
        bench::requireSameBytes(workload(name), freshDirectory());
    }
    for (const auto loop :
         {bench::loops::runtime, bench::loops::limit, bench::loops::plain, bench::loops::plugin}) {
        addStepLoop(name, loop, stepsOfRound);
    }
}

void Measurements::addStepLoop(const std::string& name, std::string_view loopName,
                               int stepsOfRound) {
    const std::string title = "step/" + name + '/' + std::string(loopName);
    const fs::path directory = freshDirectory();
    const Quiet quiet(directory_.path());
    fs::create_directories(directory);
    RunningLoop& loop = loops_[title];
    loop.loop = bench::makeStepLoop(loopName, workload(name), directory);
    benchmark::RegisterBenchmark(title.c_str(),
                                 [&loop](benchmark::State& state) {
                                     for (auto _ : state) {
                                         loop.step();
                                     }
                                 })
        ->Iterations(stepsOfRound)
        ->Repetitions(rounds_)
        ->UseRealTime()
        ->DisplayAggregatesOnly()
        ->Unit(benchmark::kMicrosecond);
}

FmiToolsInstance* Measurements::load(const std::string& name) {
    FmiToolsInstance* instance =
        fmiToolsLoadFmu(platform::narrowPath(workload(name).archive).c_str(),
                        platform::narrowPath(freshDirectory()).c_str(), "");
    if (instance == nullptr) {
        throw std::runtime_error("Cannot load the workload " + name);
    }
    return instance;
}

/// Thirty names in turn, as many as a step of a small FMU touches.
void Measurements::addLookup(const std::string& title, const std::string& name) {
    constexpr std::size_t count = 30;
    const Quiet quiet(directory_.path());
    const auto& outputs = workload(name).columns;
    std::vector<std::string> names;
    for (std::size_t i = 0; i < count; ++i) {
        names.push_back(outputs[i * outputs.size() / count].name);
    }
    FmiToolsInstance* instance = lookupInstances_.emplace_back(load(name));
    benchmark::RegisterBenchmark(title.c_str(),
                                 [names, instance](benchmark::State& state) {
                                     for (auto _ : state) {
                                         for (const std::string& variable : names) {
                                             std::int32_t exists = 0;
                                             fmiToolsGetVariableExists(instance, variable.c_str(),
                                                                       &exists);
                                             benchmark::DoNotOptimize(exists);
                                         }
                                     }
                                 })
        ->Repetitions(loads)
        ->DisplayAggregatesOnly();
}

/// Seconds that `task` takes in a process of its own. A host loads an FMU once; in this process
/// each load would find the memory that the one before it has left.
double secondsInOwnProcess(const fs::path& fmu, const std::string& task) {
    const auto result = test_support::runProgram(test_support::programPath("workload_run"),
                                                 {platform::narrowPath(fmu), task});
    constexpr std::string_view label = "load   ";
    const std::size_t at = result.error.find(label);
    if (result.exitStatus != 0 || at == std::string::npos) {
        throw std::runtime_error("Cannot measure " + task + ": " + result.error);
    }
    return std::strtod(result.error.c_str() + at + label.size(), nullptr) * 1e-3;
}

void addLoad(const std::string& name, const std::string& task) {
    const fs::path fmu = test_support::fmuPath("workload_" + name);
    benchmark::RegisterBenchmark(("load/" + name + '/' + task).c_str(),
                                 [fmu, task](benchmark::State& state) {
                                     for (auto _ : state) {
                                         state.SetIterationTime(secondsInOwnProcess(fmu, task));
                                     }
                                 })
        ->Iterations(1)
        ->Repetitions(loads)
        ->UseManualTime()
        ->DisplayAggregatesOnly()
        ->Unit(benchmark::kMillisecond);
}

std::vector<bench::Ratio> ratios() {
    std::vector<bench::Ratio> list;
    for (const std::string name : {"S", "M"}) {
        const std::string step = "step/" + name + '/';
        list.push_back({name + ", step: limit / runtime", step + "limit", step + "runtime",
                        "at least 0.90 (Windows 0.85)"});
        list.push_back({name + ", step: plain / runtime", step + "plain", step + "runtime",
                        name == "S" ? "at least 4.5 (Windows 20)" : "at least 7.5 (Windows 20)"});
        list.push_back({name + ", step: plug-in / runtime", step + "plugin", step + "runtime",
                        "at most 1.05"});
    }
    list.push_back({"XL, load: runtime / unzip and bare parse", "load/XL/load",
                    "load/XL/unzip_and_parse", "at most 1.6"});
    list.push_back(
        {"look-up: 100,000 variables / 30 variables", "lookup/100000", "lookup/30", "at most 2"});
    return list;
}

/// Takes "--rounds=N" out of the arguments.
int takeRounds(int& argc, char** argv) {
    constexpr std::string_view option = "--rounds=";
    int rounds = usualRounds;
    int kept = 0;
    for (int i = 0; i < argc; ++i) {
        if (std::string_view(argv[i]).starts_with(option)) {
            rounds = static_cast<int>(std::strtol(argv[i] + option.size(), nullptr, 10));
        } else {
            argv[kept++] = argv[i];
        }
    }
    argc = kept;
    return rounds > 0 ? rounds : usualRounds;
}

void run(int argc, char** argv) {
    Measurements measurements(takeRounds(argc, argv));
    // The loops take turns in random order, so that a busy moment of the machine meets them all.
    std::string interleaving = "--benchmark_enable_random_interleaving=true";
    std::vector<char*> arguments(argv, argv + argc);
    arguments.insert(arguments.begin() + 1, interleaving.data());
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return;
    }
    measurements.addSteps("S", 40); // In all 16 s of 1 ms steps.
    measurements.addSteps("M", 50);
    measurements.addLookup("lookup/30", "S");
    measurements.addLookup("lookup/100000", "XL");
    addLoad("XL", "load");
    addLoad("XL", "unzip_and_parse");
    bench::RatioReport report(ratios());
    benchmark::RunSpecifiedBenchmarks(&report);
}

} // namespace

int main(int argc, char** argv) {
    try {
        run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "step_bench: %s\n", error.what());
        return 1;
    }
    return 0;
}
