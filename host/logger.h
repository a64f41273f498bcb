#pragma once

#include <string>

/// The host's log, one for the whole process.
class Logger {
  public:
    /// How much a line matters; the lower, the more.
    enum Level { fatal = 0, error = 1, warning = 2, info = 3, debug = 4 };

    /// The process's logger. It belongs to the host.
    static Logger* get();

    /// Writes one line; `text` carries no line end.
    void log(Level level, const std::string& text);

  private:
    Logger();
};
