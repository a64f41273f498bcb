#include "programs/cosim_host/summary.h"

#include "platform/files.h"
#include "programs/support/number_text.h"
#include "programs/support/terminal_text.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace cosim_host {

using program_support::roundedNumber;
using program_support::shortNumber;
using program_support::terminalText;

namespace {

const char* outcomeText(RunOutcome outcome) {
    switch (outcome) {
    case RunOutcome::completed:
        return "Completed";
    case RunOutcome::interrupted:
        return "Interrupted";
    case RunOutcome::failed:
        break;
    }
    return "Failed";
}

/// A communication point for people: without the last digits, which only rounding put there.
std::string timeText(double time) {
    return roundedNumber(time, 9);
}

void printSteps(const RunPlan& plan, const RunReport& report) {
    std::printf("%s: %s steps of %s s, %s s simulated in %s s", outcomeText(report.outcome),
                std::to_string(report.steps).c_str(), shortNumber(plan.stepSize).c_str(),
                timeText(report.reachedTime).c_str(), roundedNumber(report.elapsed, 3).c_str());
    if (report.elapsed > 0.0) {
        std::printf(" (%s times real time)",
                    roundedNumber(report.reachedTime / report.elapsed, 3).c_str());
    }
    std::printf("\n");
}

std::string title(const Signal& signal) {
    return terminalText(signal.unit == "-" ? signal.name : signal.name + " [" + signal.unit + "]");
}

void printExtremes(const Recorder& recorder) {
    std::size_t width = 0;
    for (const Signal& signal : recorder.signals()) {
        width = std::max(width, title(signal).size());
    }
    for (std::size_t i = 0; i < recorder.signals().size(); ++i) {
        const Extremes& extremes = recorder.extremes()[i];
        std::printf("  %-*s %12s at %s s to %s at %s s\n", static_cast<int>(width),
                    title(recorder.signals()[i]).c_str(), roundedNumber(extremes.least, 6).c_str(),
                    timeText(extremes.timeOfLeast).c_str(),
                    roundedNumber(extremes.greatest, 6).c_str(),
                    timeText(extremes.timeOfGreatest).c_str());
    }
}

void printFile(const char* what, const std::filesystem::path& file) {
    std::error_code error;
    if (std::filesystem::exists(file, error)) {
        std::printf("%-9s%s\n", what, terminalText(platform::narrowPath(file)).c_str());
    }
}

} // namespace

void printSummary(const LaunchOptions& options, const RunReport& report, const Recorder& recorder,
                  const std::vector<SolverFiles*>& files) {
    printSteps(options.plan, report);
    if (report.outcome != RunOutcome::failed) {
        printExtremes(recorder);
    }
    for (const SolverFiles* ofOne : files) {
        printFile("Log", ofOne->log);
        printFile("Results", ofOne->results);
    }
    if (!options.outputFile.empty()) {
        printFile("Received", platform::nativePath(options.outputFile));
    }
    if (!options.plot.file.empty()) {
        printFile("Picture", platform::nativePath(options.plot.file));
    }
    std::fflush(stdout);
}

} // namespace cosim_host
