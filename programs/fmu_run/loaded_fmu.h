#pragma once

#include "fmi_tools.h"
#include "programs/fmu_run/run_directory.h"
#include "programs/support/kept_output.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace fmu_run {

/// An FMU in the runtime, ended with the object.
///
/// What it and its libraries print is kept from the user's terminal: while they are loaded and ended,
/// and as long as somebody holds keepOutput().
class LoadedFmu {
  public:
    /// Loads and instantiates. `showMessages` lets everything through that is printed.
    ///
    /// @throws program_support::InputError with the reason when the runtime cannot load the FMU.
    LoadedFmu(const std::string& fmuPath, const RunDirectory& directory, bool showMessages);
    ~LoadedFmu();
    LoadedFmu(const LoadedFmu&) = delete;
    LoadedFmu& operator=(const LoadedFmu&) = delete;
    LoadedFmu(LoadedFmu&&) = delete;
    LoadedFmu& operator=(LoadedFmu&&) = delete;

    [[nodiscard]] FmiToolsInstance* get() const { return instance_; }

    /// Opens the run's files. The runtime goes on without one that it cannot open.
    ///
    /// @throws std::runtime_error when another run has taken one since it was seen to be free.
    void openFiles(const std::string& logFile, const std::string& resultsFile) const;

    [[nodiscard]] program_support::KeptOutput keepOutput() const;

    /// What matters of that, since the last time; of an FMU that refused to be instantiated it comes
    /// with the first call that fails.
    [[nodiscard]] program_support::KeptMessages takeMessages() const;

    /// fmiToolsStartInitialization() and its result code.
    [[nodiscard]] std::int32_t startInitialization();

    /// fmiToolsEndInitialization() and its result code.
    [[nodiscard]] std::int32_t endInitialization();

    /// fmiToolsSimulateToT() and its result code.
    [[nodiscard]] std::int32_t stepTo(double time);

  private:
    void load(const std::string& fmuPath, const RunDirectory& directory);

    std::filesystem::path keptIn_; ///< Empty: everything is let through.
    std::string openingFile_;      ///< Where standard output goes while files are opened.
    FmiToolsInstance* instance_ = nullptr;
    double time_ = 0.0; ///< Where the FMU is, in seconds.
};

/// Prints what was complained of on standard error.
void show(const std::vector<std::string>& complaints);

} // namespace fmu_run
