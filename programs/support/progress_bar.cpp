#include "programs/support/progress_bar.h"

#include "platform/terminal.h"
#include "programs/support/number_text.h"

#include <algorithm>

namespace program_support {
namespace {

constexpr auto redrawInterval = std::chrono::milliseconds(100);
constexpr int width = 30;

double doneShare(double startTime, double stopTime, double time) {
    const double length = stopTime - startTime;
    return length > 0.0 ? std::clamp((time - startTime) / length, 0.0, 1.0) : 1.0;
}

} // namespace

std::string progressLine(double startTime, double stopTime, double time, double elapsed) {
    const double share = doneShare(startTime, stopTime, time);
    const auto filled = static_cast<std::size_t>(share * width);
    std::string line = "[";
    line.append(filled, '#').append(width - filled, '.').append("] ");
    line += std::to_string(static_cast<int>(share * 100.0)) + " %  t = " + roundedNumber(time, 6) +
            " of " + roundedNumber(stopTime, 6) + " s";
    if (elapsed > 0.0) {
        line += "  real-time factor " + roundedNumber((time - startTime) / elapsed, 3);
    }
    return line;
}

ProgressBar::ProgressBar(std::FILE* stream, double startTime, double stopTime, bool enabled)
    : stream_(stream),
      startTime_(startTime),
      stopTime_(stopTime),
      time_(startTime),
      enabled_(enabled && platform::isTerminal(stream)) {}

ProgressBar::~ProgressBar() {
    finish();
}

void ProgressBar::update(double time) {
    time_ = time;
    if (enabled_ && Clock::now() >= nextDraw_) {
        draw();
    }
}

void ProgressBar::finish() {
    if (enabled_) {
        draw();
        std::fputs("\n", stream_);
        enabled_ = false;
    }
}

void ProgressBar::draw() {
    const auto now = Clock::now();
    const double elapsed = std::chrono::duration<double>(now - begin_).count();
    // Blanks at the end cover what a longer line left there.
    std::fprintf(stream_, "\r%s   ", progressLine(startTime_, stopTime_, time_, elapsed).c_str());
    std::fflush(stream_);
    nextDraw_ = now + redrawInterval;
}

} // namespace program_support
