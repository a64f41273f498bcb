#pragma once

#include "fmi_tools.h"
#include "fmu_runtime/log_message.h"
#include "fmu_runtime/output_file_record.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <fmilib.h>
#include <string>
#include <string_view>

namespace fmu_runtime {

/// The local time as the log shows it, formatted anew only when the second has changed.
class TimeText {
  public:
    /// Valid until the next call.
    std::string_view now() noexcept;

  private:
    static constexpr std::size_t capacity = 200;

    std::time_t second_ = -1;
    std::size_t size_ = 0;
    std::array<char, capacity> text_{};
};

/// The log file of an instance, and what composing its lines needs.
struct LogFile {
    OutputFileRecord output{"log file"};
    /// Set while a line is written: an FMU may send messages from threads of its own.
    std::atomic_flag isBusy = ATOMIC_FLAG_INIT;
    TimeText time;
    std::string line; ///< Reused, so that composing a line allocates nothing.
};

/// Has a log to itself while it lives. Where nobody else wants it, that costs one atomic operation.
class ExclusiveLog {
  public:
    explicit ExclusiveLog(LogFile& log) noexcept;

    ~ExclusiveLog() { log_.isBusy.clear(std::memory_order_release); }

    ExclusiveLog(const ExclusiveLog&) = delete;
    ExclusiveLog& operator=(const ExclusiveLog&) = delete;
    ExclusiveLog(ExclusiveLog&&) = delete;
    ExclusiveLog& operator=(ExclusiveLog&&) = delete;

  private:
    LogFile& log_;
};

namespace levels {
inline constexpr std::string_view ok = "OK";
inline constexpr std::string_view error = "Error";
inline constexpr std::string_view debug = "Debug";
} // namespace levels

/// Writes a line of the runtime itself: module "FMITools", category "None".
void logRuntime(FmiToolsInstance* instance, std::string_view level,
                const LogMessage& message) noexcept;
void logRuntime(FmiToolsInstance* instance, std::string_view level,
                std::string_view message) noexcept;

/// As fmiToolsSetLogFile(), without a line about a file that somebody else has.
///
/// @return success, or fileTaken with no log file set
/// @throws std::bad_alloc when memory runs out
std::int32_t openLogFile(FmiToolsInstance& instance, const char* path);

/// The FMU's logger (FMI 2.0 section 2.1.5): its messages become log lines with the FMI status as
/// level and the FMU's instance name as module. `componentEnvironment` is the instance; null is
/// ignored.
void fmuLogger(fmi2_component_environment_t componentEnvironment, fmi2_string_t instanceName,
               fmi2_status_t status, fmi2_string_t category, fmi2_string_t message, ...);

/// FMI Library's logger: prints on standard error.
void libraryLogger(jm_callbacks* callbacks, jm_string module, jm_log_level_enu_t logLevel,
                   jm_string message);

/// The FMU's notice that an asynchronous step has ended. None is ever asked for, so an FMU that
/// calls it shows up on standard output.
void stepFinishedCallback(fmi2_component_environment_t componentEnvironment, fmi2_status_t status);

} // namespace fmu_runtime

/// Writes a line "[time][module][category][level] message" to the log file, or to standard output
/// while there is none.
///
/// @param instance the handle; null writes to standard output.
/// @param module   who speaks.
/// @param level    "OK", "Warning", "Error" or "Debug"; a "Debug" line is dropped unless debug logs
///                 are enabled.
/// @param category "None" for lines that are not the FMU's.
/// @param format   as for printf, with its arguments; the message is cut to 255 characters.
/// @return 0, always.
std::int32_t writeLogLine(FmiToolsInstance* instance, const char* module, const char* level,
                          const char* category, const char* format, ...) noexcept;
