#include "programs/cosim_host/recorder.h"

#include "programs/support/input_error.h"

#include <array>
#include <charconv>
#include <stdexcept>
#include <utility>

namespace cosim_host {

namespace {

/// As printf's "%.16e", which any reader turns back into exactly the same number.
void appendNumber(std::string& row, double value) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                   std::chars_format::scientific, 16);
    row.append(text.data(), end.ptr);
}

/// A name as a cell: in quotes where it would otherwise be taken apart.
std::string cell(const std::string& name) {
    if (name.find_first_of(",\"") == std::string::npos) {
        return name;
    }
    std::string quoted = "\"";
    for (const char character : name) {
        quoted.append(character == '"' ? 2 : 1, character);
    }
    return quoted + "\"";
}

void include(Extremes& extremes, double time, double value, bool first) {
    if (first || value < extremes.least) {
        extremes.least = value;
        extremes.timeOfLeast = time;
    }
    if (first || value > extremes.greatest) {
        extremes.greatest = value;
        extremes.timeOfGreatest = time;
    }
}

} // namespace

Recorder::Recorder(std::vector<Signal> signals, const std::string& file)
    : signals_(std::move(signals)),
      extremes_(signals_.size()),
      path_(file) {
    if (path_.empty()) {
        return;
    }
    file_ = platform::OutputFile(path_.c_str());
    if (!file_.isOpen()) {
        throw program_support::InputError("cannot write the output file '" + path_ +
                                          "': " + file_.lastError() +
                                          "; choose another place with --output-file");
    }
    std::string header = "time[s]";
    for (const Signal& signal : signals_) {
        header += ',';
        header += cell(signal.name + "[" + signal.unit + "]");
    }
    write(header + "\n");
}

void Recorder::record(double time) {
    std::string row;
    appendNumber(row, time);
    for (std::size_t i = 0; i < signals_.size(); ++i) {
        const double value = signals_[i].value();
        include(extremes_[i], time, value, empty_);
        row += ',';
        appendNumber(row, value);
    }
    empty_ = false;
    write(row + "\n");
}

void Recorder::write(const std::string& row) {
    if (file_.isOpen() && !file_.write(row)) {
        throw std::runtime_error("cannot write to '" + path_ + "': " + file_.lastError() +
                                 "; free the disk or choose another place with --output-file");
    }
}

} // namespace cosim_host
