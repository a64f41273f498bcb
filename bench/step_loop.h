#pragma once

#include "bench/workload.h"

#include <filesystem>
#include <memory>
#include <string_view>

namespace bench {

/// A way to run a workload. It writes the log "<name>.out" and the results "<name>.csv".
class StepLoop {
  public:
    StepLoop() = default;
    virtual ~StepLoop() = default;
    StepLoop(const StepLoop&) = delete;
    StepLoop& operator=(const StepLoop&) = delete;
    StepLoop(StepLoop&&) = delete;
    StepLoop& operator=(StepLoop&&) = delete;

    /// A communication step of full duty that ends at `time` (seconds): every input is set, the FMU
    /// steps, every output is read, all with their log lines, and the results get a row.
    virtual void step(double time) = 0;
};

/// The ways to run a workload.
namespace loops {
/// The C interface of the runtime.
inline constexpr std::string_view runtime = "runtime";
/// The solver plug-in in the reference host.
inline constexpr std::string_view plugin = "plugin";
/// The fastest that keeps the promise "every line is on disk when the call returns": bare function
/// pointers, value references looked up beforehand, one write a line and one a row.
inline constexpr std::string_view limit = "limit";
/// What one would write down first: names looked up each time, fprintf on unbuffered streams piece
/// by piece, the time formatted for every line.
inline constexpr std::string_view plain = "plain";
} // namespace loops

/// The loop called `name`, ready for its first step.
///
/// @param directory an existing directory for the loop's files.
/// @throws std::runtime_error when there is no such loop or its FMU does not start.
std::unique_ptr<StepLoop> makeStepLoop(std::string_view name, const Workload& workload,
                                       const std::filesystem::path& directory);

std::unique_ptr<StepLoop> makeRuntimeLoop(const Workload& workload,
                                          const std::filesystem::path& directory);
std::unique_ptr<StepLoop> makePluginLoop(const Workload& workload,
                                         const std::filesystem::path& directory);
std::unique_ptr<StepLoop> makeLimitLoop(const Workload& workload,
                                        const std::filesystem::path& directory);
std::unique_ptr<StepLoop> makePlainLoop(const Workload& workload,
                                        const std::filesystem::path& directory);

/// Refuses to measure a call that failed.
///
/// @throws std::runtime_error when `result` is negative.
void requireSuccess(int result);

} // namespace bench
