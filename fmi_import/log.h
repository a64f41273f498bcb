#pragma once

#include "JM/jm_callbacks.h"

#include <cstddef>
#include <initializer_list>
#include <string_view>

namespace fmi_import {

/// Module names under which messages are logged.
namespace module {
inline constexpr const char* library = "FMILIB";
inline constexpr const char* archive = "FMIZIP";
inline constexpr const char* version = "FMIXML";
inline constexpr const char* modelDescription = "FMI2XML";
inline constexpr const char* binary = "FMICAPI";
inline constexpr const char* directories = "JMPRT";
} // namespace module

/// Writes messages through an application's callbacks.
class Log {
  public:
    using Parts = std::initializer_list<std::string_view>;

    /// The one part whose control character is kept.
    static const std::string_view lineEnd;

    /// Null means the default callbacks.
    explicit Log(jm_callbacks* callbacks)
        : callbacks_(callbacks != nullptr ? callbacks : jm_get_default_callbacks()) {}

    /// Joins `parts` in the callbacks' buffer and hands them to the logger, unless the level is
    /// above the callbacks' own. Needs no memory. Control characters, which a terminal may obey and
    /// a text file takes for line ends, are shown as "?".
    void write(jm_log_level_enu_t level, const char* module, Parts parts) const;

    void fatal(const char* module, Parts parts) const { write(jm_log_level_fatal, module, parts); }

    void error(const char* module, Parts parts) const { write(jm_log_level_error, module, parts); }

    void warning(const char* module, Parts parts) const {
        write(jm_log_level_warning, module, parts);
    }

    void info(const char* module, Parts parts) const { write(jm_log_level_info, module, parts); }

    void verbose(const char* module, Parts parts) const {
        write(jm_log_level_verbose, module, parts);
    }

    [[nodiscard]] jm_callbacks* callbacks() const { return callbacks_; }

  private:
    jm_callbacks* callbacks_;
};

/// Logs "Parse error at line <n>:" and on a line of its own the reason.
void reportParseError(const Log& log, const char* module, std::size_t line,
                      std::string_view reason);

/// Writes "?" in place of the control characters between `begin` and `end`, except those in `kept`.
void hideControls(char* begin, const char* end, std::string_view kept);

} // namespace fmi_import
