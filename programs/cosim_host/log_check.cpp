#include "programs/cosim_host/log_check.h"

#include "platform/files.h"
#include "programs/support/run_log.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <string>

namespace cosim_host {

namespace {

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

void printFirst(const std::string& what, const std::string& line) {
    if (!line.empty()) {
        std::cerr << "  first " << what << ": " << line << '\n';
    }
}

/// Whether the log is in order.
bool checkLog(const std::string& log) {
    const auto report = program_support::readLog(log);
    if (report.warnings + report.errors == 0) {
        return true;
    }
    std::cerr << "cosim_host: " << counted(report.warnings, "warning") << " and "
              << counted(report.errors, "error") << " in the log '" << log << "'\n";
    printFirst("warning", report.firstWarning);
    printFirst("error", report.firstError);
    return false;
}

bool checkEnd(const std::string& log) {
    if (program_support::isLogComplete(log)) {
        return true;
    }
    std::cerr << "cosim_host: the log '" << log
              << "' breaks off, the lines above say why; make room on its disk or choose another "
                 "place by --working-directory\n";
    return false;
}

} // namespace

RunOutcome checkLogs(const RunReport& report, const std::vector<SolverFiles*>& files, bool strict) {
    bool clean = true;
    bool whole = true;
    for (const SolverFiles* each : files) {
        const std::string log = platform::narrowPath(each->log);
        clean = checkLog(log) && clean;
        whole = (report.outcome != RunOutcome::completed || checkEnd(log)) && whole;
    }
    return whole && (clean || !strict) ? report.outcome : RunOutcome::failed;
}

} // namespace cosim_host
