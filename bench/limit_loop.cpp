#include "bench/bare_fmu.h"
#include "bench/step_loop.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/output_file.h"

#include <array>
#include <charconv>
#include <cstring>
#include <ctime>
#include <vector>

namespace bench {

namespace {

constexpr std::size_t numberSize = 24;

char* append(char* end, std::string_view text) {
    std::memcpy(end, text.data(), text.size());
    return end + text.size();
}

char* append(char* end, double value) {
    return std::to_chars(end, end + numberSize, value, std::chars_format::scientific, 16).ptr;
}

/// Writes lines "[time]<text><number>", the time formatted when the second has changed.
class LineWriter {
  public:
    explicit LineWriter(const std::filesystem::path& path)
        : file_(platform::narrowPath(path).c_str()) {}

    void write(std::string_view text, double value) {
        const std::time_t second = platform::currentTime();
        if (second != second_) {
            const std::size_t size = platform::formatLocalTime(second, &line_[1], timeCapacity);
            line_[size + 1] = ']';
            afterTime_ = line_.data() + size + 2;
            second_ = second;
        }
        char* end = append(append(afterTime_, text), value);
        *end++ = '\n';
        file_.write({line_.data(), static_cast<std::size_t>(end - line_.data())});
    }

  private:
    static constexpr std::size_t timeCapacity = 200;

    platform::OutputFile file_;
    std::time_t second_ = -1;
    std::array<char, 1024> line_{'['};
    char* afterTime_ = nullptr;
};

/// A variable with the unchanging part of its line.
struct LoggedVariable {
    unsigned reference;
    std::string text;
};

std::vector<LoggedVariable> withTexts(const std::vector<Variable>& variables, const char* verb) {
    std::vector<LoggedVariable> logged;
    logged.reserve(variables.size());
    for (const Variable& variable : variables) {
        logged.push_back({variable.reference,
                          std::string("[FMITools][None][OK] ") + verb + variable.name + '='});
    }
    return logged;
}

class LimitLoop : public StepLoop {
  public:
    LimitLoop(const Workload& workload, const std::filesystem::path& directory)
        : fmu_(workload),
          inputs_(withTexts(workload.inputs, "Set input ")),
          outputs_(withTexts(workload.outputs, "Fetched output ")),
          columns_(workload.columns),
          row_((workload.columns.size() + 1) * (numberSize + 1)),
          log_(directory / "limit.out"),
          results_(platform::narrowPath(directory / "limit.csv").c_str()) {}

    void step(double time) override {
        for (std::size_t i = 0; i < inputs_.size(); ++i) {
            const double value = inputValue(i, time);
            fmu_.set(inputs_[i].reference, value);
            log_.write(inputs_[i].text, value);
        }
        log_.write("[FMITools][None][OK] Attempting step to t=", time);
        fmu_.step(time_, time - time_);
        time_ = time;
        writeRow();
        for (const LoggedVariable& output : outputs_) {
            log_.write(output.text, fmu_.get(output.reference));
        }
    }

  private:
    void writeRow() {
        char* end = append(row_.data(), time_);
        for (const Variable& column : columns_) {
            *end++ = ',';
            end = append(end, fmu_.get(column.reference));
        }
        *end++ = '\n';
        results_.write({row_.data(), static_cast<std::size_t>(end - row_.data())});
    }

    BareFmu fmu_;
    std::vector<LoggedVariable> inputs_;
    std::vector<LoggedVariable> outputs_;
    std::vector<Variable> columns_;
    std::vector<char> row_;
    LineWriter log_;
    platform::OutputFile results_;
    double time_ = 0.0;
};

} // namespace

std::unique_ptr<StepLoop> makeLimitLoop(const Workload& workload,
                                        const std::filesystem::path& directory) {
    return std::make_unique<LimitLoop>(workload, directory);
}

} // namespace bench
