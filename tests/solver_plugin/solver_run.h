#pragma once

#include "create_solver.h"
#include "host/solver.h"
#include "reference_host/log_sink.h"
#include "reference_host/simulation.h"
#include "support/files.h"

#include <memory>
#include <string>

namespace test_support {

/// A host and its solver in a directory that others may use, too.
class SolverRun {
  public:
    SolverRun(const std::filesystem::path& directory, const std::filesystem::path& fmu,
              const std::string& options = {})
        : stem_(directory / fmu.stem()) {
        host_.setWorkingDirectory(narrow(directory));
        host_.setModelFilePath(narrow(directory / "case.xml"));
        host_.setCommandLine("\"" + narrow(fmu) + "\" " + options);
    }

    /// Sets the run up and starts it; the host's failure code.
    int begin() {
        log_ = stem_.string() + ".out";
        results_ = stem_.string() + ".csv";
        reference_host::setLogSink([this](Logger::Level, const std::string& text) {
            take("FMISolver log file: ", text, log_);
            take("FMISolver results file: ", text, results_);
        });
        solver_->parseCommandLine(host_.modelManager());
        solver_->setUp(host_.modelManager());
        reference_host::setLogSink({});
        solver_->start();
        return host_.failureCode();
    }

    int step(double time) {
        solver_->solveTo(time);
        return host_.failureCode();
    }

    void end() { solver_->terminate(); }

    [[nodiscard]] const std::filesystem::path& logFile() const { return log_; }

    [[nodiscard]] const std::filesystem::path& resultsFile() const { return results_; }

  private:
    static void take(const std::string& announcement, const std::string& text,
                     std::filesystem::path& file) {
        if (text.starts_with(announcement)) {
            file = text.substr(announcement.size());
        }
    }

    std::filesystem::path stem_;
    std::filesystem::path log_;
    std::filesystem::path results_;
    reference_host::Simulation host_;
    std::unique_ptr<Solver> solver_{createSolver()};
};

} // namespace test_support
