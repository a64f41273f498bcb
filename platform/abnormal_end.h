#pragma once

#include <string_view>

/// For programs that call code which may take the process down. Nothing here is for libraries.
namespace platform {

/// Is told what happened, such as "crashed (segmentation fault)", and ends the process by
/// endProcess(). After a crash it runs where the fault was: it must not count on memory or locks.
using AbnormalEndHandler = void (*)(std::string_view whatHappened);

/// From now on `handler` is called when the process crashes ("crashed (...)"), is aborted
/// ("aborted") or ends by exit() ("called exit"); of exit() it may return when the program itself
/// ended. A limit of the system on the size of files does not end the process. Keeps a copy of standard error, whatever it is redirected to later. Once in a process.
void handleAbnormalEnds(AbnormalEndHandler handler);

/// Prints on the standard error that handleAbnormalEnds() has kept.
void printOnKeptError(std::string_view text);

/// Ends the process when endProcess() is not reached within that time.
void limitAbnormalEnd(unsigned seconds);

/// Ends the process at once, without a destructor or handler of anybody.
[[noreturn]] void endProcess(int exitStatus);

} // namespace platform
