#include "bench/bare_fmu.h"
#include "bench/step_loop.h"
#include "platform/files.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <map>
#include <string>

namespace bench {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using File = std::unique_ptr<std::FILE, CloseFile>;

File openUnbuffered(const std::filesystem::path& path) {
    File file(std::fopen(platform::narrowPath(path).c_str(), "w+b"));
    if (file) {
        std::setbuf(file.get(), nullptr);
    }
    return file;
}

class PlainLoop : public StepLoop {
  public:
    PlainLoop(const Workload& workload, const std::filesystem::path& directory)
        : workload_(workload),
          fmu_(workload),
          log_(openUnbuffered(directory / "plain.out")),
          results_(openUnbuffered(directory / "plain.csv")) {
        for (const Variable& variable : workload.columns) {
            references_[variable.name] = variable.reference;
        }
    }

    void step(double time) override {
        for (std::size_t i = 0; i < workload_.inputs.size(); ++i) {
            const std::string& name = workload_.inputs[i].name;
            const double value = inputValue(i, time);
            fmu_.set(references_.at(name), value);
            writeLine("Set input %s=%.16e", name.c_str(), value);
        }
        writeLine("Attempting step to %s=%.16e", "t", time);
        fmu_.step(time_, time - time_);
        time_ = time;
        writeRow();
        for (const Variable& output : workload_.outputs) {
            const double value = fmu_.get(references_.at(output.name));
            writeLine("Fetched output %s=%.16e", output.name.c_str(), value);
        }
    }

  private:
    void writeLine(const char* format, const char* name, double value) {
        std::array<char, 256> message{};
        std::snprintf(message.data(), message.size(), format, name, value);
        const std::time_t now = std::time(nullptr);
        std::array<char, 200> time{};
        std::strftime(time.data(), time.size(), "%c", std::localtime(&now));
        std::fprintf(log_.get(), "[%s][%s][%s][%s] %s\n", time.data(), "FMITools", "None", "OK",
                     message.data());
    }

    void writeRow() {
        std::fprintf(results_.get(), "%.16e", time_);
        for (const Variable& column : workload_.columns) {
            std::fprintf(results_.get(), ",");
            std::fprintf(results_.get(), "%.16e", fmu_.get(column.reference));
        }
        std::fprintf(results_.get(), "\n");
    }

    const Workload& workload_;
    BareFmu fmu_;
    std::map<std::string, unsigned> references_;
    File log_;
    File results_;
    double time_ = 0.0;
};

} // namespace

std::unique_ptr<StepLoop> makePlainLoop(const Workload& workload,
                                        const std::filesystem::path& directory) {
    return std::make_unique<PlainLoop>(workload, directory);
}

} // namespace bench
