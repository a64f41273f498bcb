#include "fmu_runtime/log.h"

#include "fmu_runtime/foreign_message.h"
#include "fmu_runtime/instance.h"
#include "platform/clock.h"

#include <cstdarg>
#include <cstdio>
#include <thread>

namespace fmu_runtime {

namespace {

constexpr std::string_view runtimeModule = "FMITools";
constexpr std::string_view noCategory = "None";

/// Longer than any line of an FMU that keeps its names and categories within reason.
constexpr std::size_t usualLineSize = 1024;

/// Of an FMU's instance name and category no more is written.
constexpr std::size_t longestName = 1024;

std::string_view orNull(const char* text) {
    return text != nullptr ? std::string_view(text) : std::string_view("(null)");
}

void writeTo(std::FILE* stream, std::string_view line) {
    std::fwrite(line.data(), 1, line.size(), stream);
    std::fflush(stream);
}

/// The fields of a line in the order in which they are written.
struct LineFields {
    std::string_view time;
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

/// Writes in place: a step has dozens of lines, and appending to a string piece by piece would cost
/// several times as much.
void compose(std::string& line, const LineFields& fields) {
    constexpr std::string_view frame = "[][][][] \n";
    line.resize(fields.time.size() + fields.module.size() + fields.category.size() +
                fields.level.size() + fields.message.size() + frame.size());
    char* end = line.data();
    for (const auto field : {fields.time, fields.module, fields.category, fields.level}) {
        end = writeField(end, field);
    }
    *end++ = ' ';
    end += fields.message.copy(end, fields.message.size());
    *end = '\n';
}

void writeLine(LogFile& log, std::string_view module, std::string_view level,
               std::string_view category, std::string_view message) {
    const ExclusiveLog exclusive(log);
    compose(log.line, {log.time.now(), module, category, level, message});
    if (!log.output.isOpen()) {
        writeTo(stdout, log.line);
    } else if (!log.output.write(log.line) && log.output.isNewFailure()) {
        compose(log.line, {log.time.now(), runtimeModule, noCategory, levels::error,
                           log.output.failure().text()});
        writeTo(stderr, log.line);
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
        if (instance != nullptr) {
            writeLine(instance->log, module, level, category, message);
        } else {
            LogFile standardOutput;
            writeLine(standardOutput, module, level, category, message);
        }
        return 0;
    });
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

ExclusiveLog::ExclusiveLog(LogFile& log) noexcept : log_(log) {
    while (log_.isBusy.test_and_set(std::memory_order_acquire)) {
        std::this_thread::yield();
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
    writeLine(static_cast<FmiToolsInstance*>(componentEnvironment), module.text(),
              statusName(status), ownCategory.text(),
              withoutDoubledPercents(formatted.text()).text());
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
    const ExclusiveLog exclusive(instance.log);
    instance.log.line.reserve(usualLineSize);
    return instance.log.output.open(path) ? success : fileTaken;
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
            logRuntime(instance, levels::error, instance->log.output.refusal());
        }
        return success;
    });
}
