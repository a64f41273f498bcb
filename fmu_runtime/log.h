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
#include <memory>
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

/// The log file of an instance. An FMU gets its address as the environment of its callbacks and may
/// use it from threads of its own, also when its instance was freed; endLog() sees to it that the
/// log is there as long as the FMU's code is.
struct LogFile {
    /// Overdue: somebody waited in vain, so that nobody has to wait again.
    enum class Use { free, busy, overdue };

    OutputFileRecord output{"log file"};
    TimeText time;
    std::atomic<Use> use = Use::free;
    std::atomic<bool> hasEnded = false; ///< What the FMU says now is dropped.
};

/// Has a log to itself while it lives. Where nobody else wants it, that costs one atomic operation.
/// Who has it may never give it back, such as a thread that its FMU has ended: after about a second
/// the log is not waited for any more, and isHeld() is false.
class ExclusiveLog {
  public:
    explicit ExclusiveLog(LogFile& log) noexcept;
    ~ExclusiveLog();

    ExclusiveLog(const ExclusiveLog&) = delete;
    ExclusiveLog& operator=(const ExclusiveLog&) = delete;
    ExclusiveLog(ExclusiveLog&&) = delete;
    ExclusiveLog& operator=(ExclusiveLog&&) = delete;

    [[nodiscard]] bool isHeld() const { return isHeld_; }

  private:
    LogFile& log_;
    bool isHeld_;
};

/// Closes a log. Where its FMU may still call, or is at it, the record stays for good: the FMU has
/// its address.
void endLog(std::unique_ptr<LogFile> log, bool fmuMayCall);

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
/// level and the FMU's instance name as module. `componentEnvironment` is the instance's LogFile; null
/// is ignored. May be called from any thread; a line that has to wait too long is dropped.
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
/// @param format   as for printf, with its arguments; the message is cut to 255 characters, the other
///                 texts to 1024.
/// @return 0, always.
std::int32_t writeLogLine(FmiToolsInstance* instance, const char* module, const char* level,
                          const char* category, const char* format, ...) noexcept;
