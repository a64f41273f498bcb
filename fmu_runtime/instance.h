#pragma once

#include "fmi_tools.h"
#include "fmu_runtime/log.h"
#include "fmu_runtime/results_file.h"
#include "fmu_runtime/slave.h"
#include "platform/claim.h"

#include <cstdint>
#include <memory>
#include <string>

/// The record behind the handle: one FMU, its two files and what the exports store.
struct FmiToolsInstance {
    std::string fmuPath;
    std::string unpackDirectory;  ///< Absolute; holds the unpacked FMU.
    std::string scriptDirectory;  ///< As the caller gave it, with its closing separator.
    platform::Claim unpackClaim;  ///< Of the directory, where the caller has claimed it.
    platform::Claim onlyInstance; ///< Of an FMU that may have only one in a process.
    /// Until the clean-up has closed it; before the slave, which may write to it until it is gone.
    std::unique_ptr<fmu_runtime::LogFile> log = std::make_unique<fmu_runtime::LogFile>();
    fmu_runtime::Slave slave;
    double currentTime = 0.0; ///< The FMU's communication point, seconds.
    double logInterval = 0.0; ///< Step of fmiToolsSimulate, seconds.
    double startTime = 0.0;   ///< First target of fmiToolsSimulate, seconds.
    double endTime = 0.0;     ///< No target of fmiToolsSimulate lies beyond, seconds.
    bool debugLogsEnabled = false;
    fmu_runtime::ResultsFile results;
    void* userData = nullptr; ///< The caller's.
};

namespace fmu_runtime {

/// The result codes of the C interface.
enum ResultCode : std::int32_t {
    success = 0,
    notAvailable = -1, ///< Null handle, or no results columns.
    instantiationFailed = -100,
    initialisationFailed = -200,
    stepFailed = -201,
    variableAccessFailed = -202,
    fileTaken = -300, ///< Somebody else has the file. Only between runtime and plug-in.
};

/// Runs the body of an export and answers `failure` where it throws: a lack of memory may not reach
/// a caller in C.
template <typename Answer, typename Body>
Answer guarded(Answer failure, Body&& body) noexcept {
    try {
        return body();
    } catch (...) {
        return failure;
    }
}

} // namespace fmu_runtime
