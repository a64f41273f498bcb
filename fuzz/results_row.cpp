/// Rows of the results file, through the runtime with an FMU behind it: what printf writes for what
/// the FMU answers, and the beginning of a row when the FMU refuses a value.
#include "fmi_tools.h"
#include "fuzz/fuzz_support.h"
#include "platform/temporary_directory.h"

#include <array>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr std::array columns{"gain", "mass", "doubleMass", "u",      "rawInput", "F[1]",
                             "F[2]", "F[3]", "x",          "xAlias", "y",        "P[1]",
                             "P[2]", "P[3]", "P",          "Q[1]"};
constexpr std::size_t xAlias = 9;
constexpr std::array inputs{"gain", "mass", "u", "rawInput", "F[1]", "F[2]", "F[3]"};

/// The scripted FMU, whose results go into a pipe that can be read at once.
class Run {
  public:
    Run() {
        const auto pipe = scratch_ / "results";
        fuzz::require(mkfifo(pipe.c_str(), 0600) == 0, "a pipe can be made");
        results_ = open(pipe.c_str(), O_RDWR | O_NONBLOCK);
        fmu_ = fmiToolsLoadFmu(FMU_DIRECTORY "/scripted.fmu", (scratch_ / "unpacked").c_str(), "");
        fuzz::require(fmu_ != nullptr, "the FMU loads");
        fmiToolsSetLogFile(fmu_, "/dev/null");
        fmiToolsSetResultsFile(fmu_, pipe.c_str());
        fmiToolsInitialize(fmu_);
        readNew();
    }

    ~Run() {
        fmiToolsCleanup(fmu_);
        close(results_);
    }

    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    Run(Run&&) = delete;
    Run& operator=(Run&&) = delete;

    void set(const char* name, double value) { fmiToolsSetRealVariableValue(fmu_, name, value); }

    void script(const std::string& text) {
        fmiToolsSetStringVariableValue(fmu_, "script", text.c_str());
    }

    double get(const char* name) {
        double value = 0.0;
        fuzz::require(fmiToolsGetRealVariableValue(fmu_, name, &value) == 0, "a value is read");
        return value;
    }

    /// Writes a row; returns it and whether that succeeded.
    std::pair<std::string, bool> row() {
        const bool written = fmiToolsSimulateToT(fmu_, 0.0) == 0;
        return {readNew(), written};
    }

  private:
    std::string readNew() {
        std::array<char, 4096> text;
        const ssize_t size = read(results_, text.data(), text.size());
        return {text.data(), static_cast<std::size_t>(std::max(size, ssize_t{0}))};
    }

    platform::TemporaryDirectory scratch_{"fuzz_"};
    int results_ = -1;
    FmiToolsInstance* fmu_ = nullptr;
};

std::string printed(double value) {
    std::array<char, 64> text;
    std::snprintf(text.data(), text.size(), "%.16e", value);
    return text.data();
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Run run;
    fuzz::silenceStandardOutput();
    fuzz::Bytes bytes(data, size);
    // The FMU knows xAlias as x, which is the column before it.
    const auto chosen = bytes.take<std::uint8_t>();
    const std::size_t refused = chosen == xAlias ? xAlias - 1 : chosen;
    for (const char* input : inputs) {
        run.set(input, bytes.take<double>());
    }
    std::string expected = "0.0000000000000000e+00";
    for (std::size_t index = 0; index < std::min(refused, columns.size()); ++index) {
        expected += ',' + printed(run.get(columns[index]));
    }
    const bool complete = refused >= columns.size();
    run.script(complete ? "" : std::string("getReal(") + columns[refused] + ")=error");
    const auto [row, written] = run.row();
    run.script("");
    fuzz::require(written == complete, "a refused value is told");
    fuzz::require(row == expected + (complete ? '\n' : ','), "a row is as printf writes it");
    return 0;
}
