#include "host/logger.h"

#include "reference_host/log_sink.h"

#include <cstdio>
#include <utility>

namespace {

// The log is one for the whole process, so its destination is too.
reference_host::LogSink& currentSink() {
    static reference_host::LogSink sink;
    return sink;
}

} // namespace

Logger::Logger() = default;

Logger* Logger::get() {
    static Logger logger;
    return &logger;
}

void Logger::log(Level level, const std::string& text) {
    if (currentSink()) {
        currentSink()(level, text);
        return;
    }
    std::fprintf(stdout, "%s\n", text.c_str());
    std::fflush(stdout);
}

namespace reference_host {

void setLogSink(LogSink sink) {
    currentSink() = std::move(sink);
}

} // namespace reference_host
