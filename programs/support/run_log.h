#pragma once

#include <cstddef>
#include <string>

namespace program_support {

/// What a run's log says beside that all is well.
struct LogReport {
    std::size_t warnings = 0; ///< Lines of level Warning.
    std::size_t errors = 0;   ///< Lines of level Discard, Error and Fatal.
    std::string firstWarning; ///< Whole lines.
    std::string firstError;
    std::string lastComplaint; ///< Of the FMU; where it did not complain, of any.
    bool begun = false;        ///< The runtime has written to it.
};

/// Reads a log file. One that cannot be read says nothing.
LogReport readLog(const std::string& path);

/// The last line of a log file, empty when there is none.
std::string lastLine(const std::string& path);

/// Whether the runtime's last line is in a log that a finished run has left, so that no line was
/// lost on a full disk. A device is asked by one more line; true for what is neither.
bool isLogComplete(const std::string& path);

/// The FMU's or solver's reason in a log, for the end of a message: "; its log 'x.out' says: ..."
/// with the last complaint, or where to look.
std::string reasonInLog(const std::string& path);

} // namespace program_support
