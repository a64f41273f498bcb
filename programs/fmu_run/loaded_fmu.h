#pragma once

#include "fmi_tools.h"
#include "programs/fmu_run/run_directory.h"

#include <cstdint>
#include <string>

namespace fmu_run {

/// An FMU in the runtime, ended with the object.
///
/// What the runtime and the FMI library print while they load, initialise and end it is kept from
/// the user's terminal unless it matters: the reason of a failure, and what the FMU itself
/// complains about.
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

    /// fmiToolsStartInitialization() and its result code.
    [[nodiscard]] std::int32_t startInitialization();

    /// Whether startInitialization() found an instance. One that the FMU refused fails only there.
    [[nodiscard]] bool isInstantiated() const { return instantiated_; }

    /// fmiToolsEndInitialization() and its result code.
    [[nodiscard]] std::int32_t endInitialization() const;

    /// fmiToolsSimulateToT() and its result code.
    [[nodiscard]] std::int32_t stepTo(double time);

  private:
    void load(const std::string& fmuPath, const RunDirectory& directory);
    void showComplaints() const;

    std::string outputFile_; ///< Where standard output goes meanwhile; empty: it is let through.
    std::string errorFile_;
    FmiToolsInstance* instance_ = nullptr;
    bool instantiated_ = true;
    double time_ = 0.0; ///< Where the FMU is, in seconds.
};

} // namespace fmu_run
