#pragma once

#include "platform/output_file.h"
#include "programs/cosim_host/signal.h"

#include <string>
#include <vector>

namespace cosim_host {

/// Smallest and largest value of a signal over the run, with their times (seconds).
struct Extremes {
    double least = 0.0;
    double timeOfLeast = 0.0;
    double greatest = 0.0;
    double timeOfGreatest = 0.0;
};

/// Watches signals over the run: writes them to a file, row by row, and keeps their extremes.
class Recorder {
  public:
    /// `file` receives the rows in full precision, each in one write, below a header that gives
    /// each name with its unit, as in the solver's results; empty for none.
    ///
    /// @throws program_support::InputError when the file cannot be written.
    Recorder(std::vector<Signal> signals, const std::string& file);

    /// Takes the signals' values as they are at `time` (seconds).
    ///
    /// @throws std::runtime_error when the row cannot be written.
    void record(double time);

    [[nodiscard]] const std::vector<Signal>& signals() const { return signals_; }

    /// By signal, in their order; of no meaning before the first record().
    [[nodiscard]] const std::vector<Extremes>& extremes() const { return extremes_; }

  private:
    void write(const std::string& row);

    std::vector<Signal> signals_;
    std::vector<Extremes> extremes_;
    bool empty_ = true;
    std::string path_;
    platform::OutputFile file_;
};

} // namespace cosim_host
