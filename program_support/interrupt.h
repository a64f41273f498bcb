#pragma once

namespace program_support {

/// While it lives, Ctrl-C (SIGINT) and SIGTERM do not end the process but make interrupted() true,
/// so that a run ends between two steps with its files complete. A second signal ends the process
/// at once: a model that hangs in a step would never let the run look. One at a time.
class InterruptGuard {
  public:
    InterruptGuard();
    ~InterruptGuard();
    InterruptGuard(const InterruptGuard&) = delete;
    InterruptGuard& operator=(const InterruptGuard&) = delete;
    InterruptGuard(InterruptGuard&&) = delete;
    InterruptGuard& operator=(InterruptGuard&&) = delete;

  private:
    using Handler = void (*)(int);
    Handler previousInterrupt_;
    Handler previousTerminate_;
};

/// True when a signal arrived since the InterruptGuard was made.
bool interrupted();

/// Exit status of a program that a signal ended early, as shells report it for Ctrl-C.
constexpr int interruptedStatus = 130;

} // namespace program_support
