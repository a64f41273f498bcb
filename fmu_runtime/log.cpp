#include "fmu_runtime/log.h"

#include "fmu_runtime/foreign_message.h"
#include "fmu_runtime/instance.h"
#include "platform/clock.h"

#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <thread>
#include <utility>

namespace fmu_runtime {

namespace {

constexpr std::string_view runtimeModule = "FMITools";
constexpr std::string_view noCategory = "None";

/// Of a module, a category and a level no more is written.
constexpr std::size_t longestName = 1024;

std::string_view orNull(const char* text) {
    return text != nullptr ? std::string_view(text).substr(0, longestName) : "(null)";
}

void writeTo(std::FILE* stream, std::string_view line) {
    std::fwrite(line.data(), 1, line.size(), stream);
    std::fflush(stream);
}

/// The fields of a line behind its time, in the order in which they are written; none is longer than
/// a Line has room for.
struct LineFields {
    std::string_view module;
    std::string_view category;
    std::string_view level;
    std::string_view message;
};

char* writeField(char* target, std::string_view field) {
    *target++ = '[';
    target += field.copy(target, field.size());
    *target++ = ']';
    return target;
}

/// A line of the log, composed in place: a step has dozens, and appending to a string piece by piece
/// would cost several times as much. So would cutting the fields here: a copy of whose size the
/// compiler knows the bound becomes an instruction that is slow for short texts.
class Line {
  public:
    Line(std::string_view time, const LineFields& fields) noexcept {
        char* end = writeField(text_.data(), time);
        end = writeField(end, fields.module);
        end = writeField(end, fields.category);
        end = writeField(end, fields.level);
        *end++ = ' ';
        end += fields.message.copy(end, fields.message.size());
        *end++ = '\n';
        size_ = static_cast<std::size_t>(end - text_.data());
    }

    ~Line() = default;
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    Line(Line&&) = delete;
    Line& operator=(Line&&) = delete;

    [[nodiscard]] std::string_view text() const { return {text_.data(), size_}; }

  private:
    static constexpr std::size_t frameSize = 10; // "[][][][] " and the line end.

    std::array<char, 4 * longestName + LogMessage::capacity + frameSize> text_; // Read up to size_.
    std::size_t size_;
};

/// For who has the log to himself.
void writeHeld(LogFile& log, const LineFields& fields) {
    const Line line(log.time.now(), fields);
    if (!log.output.isOpen()) {
        writeTo(stdout, line.text());
    } else if (!log.output.write(line.text()) && log.output.isNewFailure()) {
        const LogMessage failure = log.output.failure();
        writeTo(stderr,
                Line(log.time.now(), {runtimeModule, noCategory, levels::error, failure.text()})
                    .text());
    }
}

/// For who waited in vain, or has no log: of a log nothing is changed that others may be at.
void writeUnheld(LogFile* log, const LineFields& fields) {
    TimeText time;
    const Line line(time.now(), fields);
    if (log != nullptr && log->output.isOpen()) {
        static_cast<void>(log->output.write(line.text()));
    } else {
        writeTo(stdout, line.text());
    }
}

/// A line of the host's thread is written even where the log cannot be had.
void writeLine(LogFile& log, const LineFields& fields) {
    const ExclusiveLog exclusive(log);
    if (exclusive.isHeld()) {
        writeHeld(log, fields);
    } else {
        writeUnheld(&log, fields);
    }
}

void writeFmuLine(LogFile& log, const LineFields& fields) {
    if (log.hasEnded.load(std::memory_order_relaxed)) {
        return;
    }
    const ExclusiveLog exclusive(log);
    if (exclusive.isHeld() && !log.hasEnded.load(std::memory_order_relaxed)) {
        writeHeld(log, fields);
    }
}

bool isDropped(const FmiToolsInstance* instance, std::string_view level) {
    const bool debugLogsEnabled = instance != nullptr && instance->debugLogsEnabled;
    return !debugLogsEnabled && level == levels::debug;
}

void writeLine(FmiToolsInstance* instance, std::string_view module, std::string_view level,
               std::string_view category, std::string_view message) noexcept {
    if (isDropped(instance, level)) {
        return;
    }
    guarded(0, [&] {
        const LineFields fields{module, category, level, message};
        if (instance != nullptr && instance->log != nullptr) {
            writeLine(*instance->log, fields);
        } else {
            writeUnheld(nullptr, fields);
        }
        return 0;
    });
}

/// True when the log was free and is the caller's now.
bool take(LogFile& log) noexcept {
    auto expected = LogFile::Use::free;
    return log.use.compare_exchange_strong(expected, LogFile::Use::busy, std::memory_order_acquire);
}

bool takeAfterWaiting(LogFile& log) noexcept {
    constexpr int quickAttempts = 1000;
    constexpr int attempts = quickAttempts + 1000;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (log.use.load(std::memory_order_relaxed) == LogFile::Use::overdue) {
            return false;
        }
        if (attempt < quickAttempts) {
            std::this_thread::yield();
        } else {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        if (take(log)) {
            return true;
        }
    }
    auto expected = LogFile::Use::busy;
    log.use.compare_exchange_strong(expected, LogFile::Use::overdue, std::memory_order_relaxed);
    return false;
}

const char* statusName(fmi2_status_t status) {
    static constexpr std::array names{"OK", "Warning", "Discard", "Error", "Fatal", "Pending"};
    const auto index = static_cast<std::size_t>(status); // A negative status becomes a large index.
    return index < names.size() ? names[index] : "Unknown";
}

} // namespace

std::string_view TimeText::now() noexcept {
    const std::time_t second = platform::currentTime();
    if (second != second_) {
        size_ = platform::formatLocalTime(second, text_.data(), text_.size());
        second_ = second;
    }
    return size_ > 0 ? std::string_view(text_.data(), size_) : "Unknown time";
}

ExclusiveLog::ExclusiveLog(LogFile& log) noexcept
    : log_(log),
      isHeld_(take(log) || takeAfterWaiting(log)) {}

ExclusiveLog::~ExclusiveLog() {
    if (isHeld_) {
        log_.use.store(LogFile::Use::free, std::memory_order_release);
    }
}

void endLog(std::unique_ptr<LogFile> log, bool fmuMayCall) {
    log->hasEnded.store(true, std::memory_order_relaxed);
    bool isUsed = fmuMayCall;
    {
        const ExclusiveLog exclusive(*log);
        if (exclusive.isHeld()) {
            log->output.close();
        } else {
            isUsed = true;
        }
    }
    if (isUsed) {
        static_cast<void>(log.release());
    }
}

void logRuntime(FmiToolsInstance* instance, std::string_view level,
                std::string_view message) noexcept {
    writeLine(instance, runtimeModule, level, noCategory, message);
}

void logRuntime(FmiToolsInstance* instance, std::string_view level,
                const LogMessage& message) noexcept {
    logRuntime(instance, level, message.text());
}

void fmuLogger(fmi2_component_environment_t componentEnvironment, fmi2_string_t instanceName,
               fmi2_status_t status, fmi2_string_t category, fmi2_string_t message, ...) {
    if (componentEnvironment == nullptr) {
        return;
    }
    std::va_list arguments;
    va_start(arguments, message);
    const LogMessage formatted = formatForeignMessage(message, arguments);
    va_end(arguments);
    const ForeignText<longestName> module(instanceName);
    const ForeignText<longestName> ownCategory(category);
    // The formatted text is itself taken for a format, so a doubled percent sign comes out single.
    const LogMessage text = withoutDoubledPercents(formatted.text());
    const char* level = statusName(status);
    guarded(0, [&] {
        writeFmuLine(*static_cast<LogFile*>(componentEnvironment),
                     {module.text(), ownCategory.text(), level, text.text()});
        return 0;
    });
}

void libraryLogger(jm_callbacks* /*callbacks*/, jm_string module, jm_log_level_enu_t logLevel,
                   jm_string message) {
    std::fprintf(stderr, "module = %s, log level = %d: %s\n", module, static_cast<int>(logLevel),
                 message);
}

void stepFinishedCallback(fmi2_component_environment_t /*componentEnvironment*/,
                          fmi2_status_t status) {
    std::printf("stepFinished is called with fmiStatus = %s\n", fmi2_status_to_string(status));
    std::fflush(stdout);
}

std::int32_t openLogFile(FmiToolsInstance& instance, const char* path) {
    const ExclusiveLog exclusive(*instance.log);
    return instance.log->output.open(path) ? success : fileTaken;
}

} // namespace fmu_runtime

using namespace fmu_runtime;

std::int32_t writeLogLine(FmiToolsInstance* instance, const char* module, const char* level,
                          const char* category, const char* format, ...) noexcept {
    std::va_list arguments;
    va_start(arguments, format);
    const LogMessage message = formatForeignMessage(format, arguments); // In no locale's own way.
    va_end(arguments);
    writeLine(instance, orNull(module), orNull(level), orNull(category), message.text());
    return success;
}

std::int32_t fmiToolsSetLogFile(FmiToolsInstance* instance, const char* path) {
    if (instance == nullptr) {
        return notAvailable;
    }
    return guarded<std::int32_t>(success, [&] {
        if (openLogFile(*instance, path) == fileTaken) {
            logRuntime(instance, levels::error, instance->log->output.refusal());
        }
        return success;
    });
}
