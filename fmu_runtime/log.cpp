#include "fmu_runtime/log.h"

#include "fmu_runtime/foreign_message.h"
#include "fmu_runtime/instance.h"
#include "platform/clock.h"

#include <cstdio>
#include <cstring>
#include <utility>

namespace fmu_runtime {

namespace {

constexpr std::string_view runtimeModule = "FMITools";
constexpr std::string_view noCategory = "None";

/// Longer than any line of an FMU that keeps its names and categories within reason.
constexpr std::size_t usualLineSize = 1024;

std::string_view orNull(const char* text) {
    return text != nullptr ? std::string_view(text) : std::string_view("(null)");
}

void writeToStandardOutput(std::string_view line) {
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
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

void reportUnwritableLog(LogFile& log) {
    if (!std::exchange(log.failureReported, true)) {
        LogMessage message("Failed to write log file ");
        message.add(log.path).add(": ").add(log.file.lastError());
        compose(log.line,
                {log.time.now(), runtimeModule, noCategory, levels::error, message.text()});
        writeToStandardOutput(log.line);
    }
}

void writeLine(LogFile& log, std::string_view module, std::string_view level,
               std::string_view category, std::string_view message) {
    compose(log.line, {log.time.now(), module, category, level, message});
    if (!log.file.isOpen()) {
        writeToStandardOutput(log.line);
    } else if (!log.file.write(log.line)) {
        reportUnwritableLog(log);
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
    const LogMessage formatted =
        formatForeignMessage(message != nullptr ? message : "(null)", arguments);
    va_end(arguments);
    // The formatted text is itself taken for a format, so a doubled percent sign comes out single.
    writeLine(static_cast<FmiToolsInstance*>(componentEnvironment), orNull(instanceName),
              statusName(status), orNull(category),
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

} // namespace fmu_runtime

using namespace fmu_runtime;

std::int32_t writeLogLine(FmiToolsInstance* instance, const char* module, const char* level,
                          const char* category, const char* format, ...) noexcept {
    std::array<char, LogMessage::capacity + 1> message{};
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(message.data(), message.size(), format, arguments);
    va_end(arguments);
    writeLine(instance, orNull(module), orNull(level), orNull(category), message.data());
    return success;
}

std::int32_t fmiToolsSetLogFile(FmiToolsInstance* instance, const char* path) {
    if (instance == nullptr) {
        return notAvailable;
    }
    return guarded<std::int32_t>(success, [&] {
        LogFile& log = instance->log;
        log.line.reserve(usualLineSize);
        log.earlier.push_back(std::move(log.file));
        log.path = orNull(path);
        log.file = platform::OutputFile(path);
        log.failureReported = false;
        return success;
    });
}
