#pragma once

#include "fmi_tools.h"
#include "support/files.h"

#include <string>

namespace test_support {

/// A short run of the scripted FMU through every stage, in a directory of its own. Its paths are
/// made beforehand, so that what fails during a run is the runtime's.
class WholeRun {
  public:
    /// True when every call succeeded.
    bool run() const {
        FmiToolsInstance* fmu =
            fmiToolsLoadFmu(fmu_.c_str(), unpacked_.c_str(), directoryPath_.c_str());
        if (fmu == nullptr) {
            return false;
        }
        double x = 0.0;
        bool fine = fmiToolsSetLogFile(fmu, log_.c_str()) == 0;
        fine = fmiToolsSetResultsFile(fmu, results_.c_str()) == 0 && fine;
        fine = fmiToolsSetRealVariableValue(fmu, "u", 2.0) == 0 && fine;
        fine =
            fmiToolsSetStringVariableValue(fmu, "label", "a text longer than a short one") == 0 &&
            fine;
        fine = fmiToolsInitialize(fmu) == 0 && fine;
        for (const double time : {0.0, 0.1, 0.2, 0.3}) {
            fine = fmiToolsSimulateToT(fmu, time) == 0 && fine;
        }
        fine = fmiToolsGetRealVariableValue(fmu, "x", &x) == 0 && fine;
        return fmiToolsCleanup(fmu) == 0 && fine;
    }

    std::string results() const { return readFile(results_); }

    std::string log() const { return readFile(log_); }

    /// Removes what an earlier run left.
    void clear() const {
        std::filesystem::remove_all(unpacked_);
        std::filesystem::remove(results_);
        std::filesystem::remove(log_);
    }

  private:
    TemporaryDirectory directory_;
    std::string directoryPath_ = narrow(directory_ / "");
    std::string fmu_ = narrow(fmuPath("scripted"));
    std::string unpacked_ = narrow(directory_ / "unpacked");
    std::string results_ = narrow(directory_ / "run.csv");
    std::string log_ = narrow(directory_ / "run.out");
};

} // namespace test_support
