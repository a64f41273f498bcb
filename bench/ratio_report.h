#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace bench {

/// Two benchmarks whose times are compared.
struct Ratio {
    std::string title;
    std::string dividend; ///< Name of a benchmark.
    std::string divisor;  ///< Name of a benchmark.
    std::string target;   ///< What the ratio should be, in words.
};

/// Prints the median of each benchmark's repetitions, at the end the ratios between them.
class RatioReport : public benchmark::ConsoleReporter {
  public:
    explicit RatioReport(std::vector<Ratio> ratios) : ratios_(std::move(ratios)) {}

    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

  private:
    std::vector<Ratio> ratios_;
    std::map<std::string, double> medians_;
};

} // namespace bench
