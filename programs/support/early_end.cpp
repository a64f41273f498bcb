#include "programs/support/early_end.h"

#include "programs/support/number_text.h"

#include <csignal>

namespace program_support {
namespace {

// A signal handler gets no argument of ours and may touch nothing but such a variable.
volatile std::sig_atomic_t signalArrived = 0;

extern "C" void noteSignal(int /*signal*/) {
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    signalArrived = 1;
}

} // namespace

EarlyEnd::EarlyEnd(const std::optional<double>& timeout) : timeout_(timeout) {
    signalArrived = 0;
    previousInterrupt_ = std::signal(SIGINT, noteSignal);
    previousTerminate_ = std::signal(SIGTERM, noteSignal);
}

EarlyEnd::~EarlyEnd() {
    std::signal(SIGINT, previousInterrupt_);
    std::signal(SIGTERM, previousTerminate_);
}

bool EarlyEnd::isDue() const {
    return signalArrived != 0 || timeIsOver();
}

std::string EarlyEnd::reason() const {
    if (signalArrived != 0) {
        return "interrupted";
    }
    return timeIsOver() ? "stopped after --timeout " + shortNumber(*timeout_) + " s" : "";
}

bool EarlyEnd::timeIsOver() const {
    return timeout_ && std::chrono::duration<double>(Clock::now() - begin_).count() >= *timeout_;
}

} // namespace program_support
