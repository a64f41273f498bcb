#include "fmi_import/log.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

jm_callbacks builtInCallbacks{std::malloc,       std::calloc,       std::realloc, std::free,
                              jm_default_logger, jm_log_level_info, nullptr,      {}};

// The interface has applications replace the defaults once, before they use the library.
jm_callbacks* defaultCallbacks = &builtInCallbacks;

void handOver(jm_callbacks* callbacks, const char* module, jm_log_level_enu_t level) {
    if (callbacks->logger != nullptr) {
        callbacks->logger(callbacks, module, level, callbacks->errMessageBuffer);
    }
}

} // namespace

namespace fmi_import {

const std::string_view Log::lineEnd = "\n";

void hideControls(char* begin, const char* end, std::string_view kept) {
    for (char* c = begin; c != end; ++c) {
        const auto byte = static_cast<unsigned char>(*c);
        const bool isControl = byte < ' ' || byte == 0x7F;
        // Beyond ASCII there are 32 more, in UTF-8 two bytes each.
        const auto next = static_cast<unsigned char>(c + 1 != end ? c[1] : 0);
        const bool isWideControl = byte == 0xC2 && next >= 0x80 && next < 0xA0;
        if (isWideControl) {
            c[0] = '?';
            *++c = '?';
        } else if (isControl && kept.find(*c) == std::string_view::npos) {
            *c = '?';
        }
    }
}

void reportParseError(const Log& log, const char* module, std::size_t line,
                      std::string_view reason) {
    log.fatal(module, {"Parse error at line ", std::to_string(line), ":", Log::lineEnd, reason});
}

void Log::write(jm_log_level_enu_t level, const char* module, Parts parts) const {
    if (level > callbacks_->log_level) {
        return;
    }
    char* end = callbacks_->errMessageBuffer;
    std::size_t room = JM_MAX_ERROR_MESSAGE_SIZE - 1;
    for (const std::string_view part : parts) {
        const std::size_t size = std::min(part.size(), room);
        char* const begin = end;
        end = std::copy_n(part.data(), size, begin);
        hideControls(begin, end, part.data() == lineEnd.data() ? lineEnd : std::string_view());
        room -= size;
    }
    *end = '\0';
    handOver(callbacks_, module, level);
}

} // namespace fmi_import

jm_callbacks* jm_get_default_callbacks(void) {
    return defaultCallbacks;
}

void jm_set_default_callbacks(jm_callbacks* c) {
    defaultCallbacks = c != nullptr ? c : &builtInCallbacks;
}

void jm_default_logger(jm_callbacks*, jm_string module, jm_log_level_enu_t level,
                       jm_string message) {
    std::fprintf(stderr, "[%s][%s] %s\n", jm_log_level_to_string(level), module, message);
}

const char* jm_log_level_to_string(jm_log_level_enu_t level) {
    constexpr std::array names{"NOTHING", "FATAL",   "ERROR", "WARNING",
                               "INFO",    "VERBOSE", "DEBUG", "ALL"};
    const auto index = static_cast<unsigned>(level);
    return index < names.size() ? names[index] : "UNEXPECTED";
}

void jm_log_v(jm_callbacks* cb, const char* module, jm_log_level_enu_t level, const char* fmt,
              va_list ap) {
    jm_callbacks* callbacks = cb != nullptr ? cb : jm_get_default_callbacks();
    if (level <= callbacks->log_level) {
        std::vsnprintf(callbacks->errMessageBuffer, JM_MAX_ERROR_MESSAGE_SIZE, fmt, ap);
        handOver(callbacks, module, level);
    }
}

void jm_log(jm_callbacks* cb, const char* module, jm_log_level_enu_t level, const char* fmt, ...) {
    va_list arguments;
    va_start(arguments, fmt);
    jm_log_v(cb, module, level, fmt, arguments);
    va_end(arguments);
}

void jm_log_fatal(jm_callbacks* cb, const char* module, const char* fmt, ...) {
    va_list arguments;
    va_start(arguments, fmt);
    jm_log_v(cb, module, jm_log_level_fatal, fmt, arguments);
    va_end(arguments);
}

void jm_log_error(jm_callbacks* cb, const char* module, const char* fmt, ...) {
    va_list arguments;
    va_start(arguments, fmt);
    jm_log_v(cb, module, jm_log_level_error, fmt, arguments);
    va_end(arguments);
}

void jm_log_warning(jm_callbacks* cb, const char* module, const char* fmt, ...) {
    va_list arguments;
    va_start(arguments, fmt);
    jm_log_v(cb, module, jm_log_level_warning, fmt, arguments);
    va_end(arguments);
}

void jm_log_info(jm_callbacks* cb, const char* module, const char* fmt, ...) {
    va_list arguments;
    va_start(arguments, fmt);
    jm_log_v(cb, module, jm_log_level_info, fmt, arguments);
    va_end(arguments);
}

void jm_log_verbose(jm_callbacks* cb, const char* module, const char* fmt, ...) {
    va_list arguments;
    va_start(arguments, fmt);
    jm_log_v(cb, module, jm_log_level_verbose, fmt, arguments);
    va_end(arguments);
}
