#pragma once

#include <string>

/// The host's log, one for the whole process.
class Logger {
  public:
    /// How much a line matters; the lower, the more.
    enum Level { Fatal = 0, Error = 1, Warning = 2, Info = 3, Debug = 4 };

    /// The process's logger. It belongs to the host.
    static Logger* get();

    /// Writes one line; `text` carries no line end.
    void log(Level level, const std::string& text);

  private:
    Logger();
};
