#include "program_support/interrupt.h"

#include <csignal>

namespace program_support {
namespace {

// A signal handler gets no argument of ours and may touch nothing but such a variable.
volatile std::sig_atomic_t signalArrived = 0;

extern "C" void noteSignal(int signal) {
    std::signal(signal, SIG_DFL);
    signalArrived = 1;
}

} // namespace

InterruptGuard::InterruptGuard() {
    signalArrived = 0;
    previousInterrupt_ = std::signal(SIGINT, noteSignal);
    previousTerminate_ = std::signal(SIGTERM, noteSignal);
}

InterruptGuard::~InterruptGuard() {
    std::signal(SIGINT, previousInterrupt_);
    std::signal(SIGTERM, previousTerminate_);
}

bool interrupted() {
    return signalArrived != 0;
}

} // namespace program_support
