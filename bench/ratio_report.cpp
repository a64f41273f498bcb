#include "bench/ratio_report.h"

#include <cstdio>

namespace bench {

void RatioReport::ReportRuns(const std::vector<Run>& runs) {
    std::vector<Run> shown;
    for (const Run& run : runs) {
        if (run.aggregate_name == "median" || run.error_occurred) {
            shown.push_back(run);
            medians_[run.run_name.function_name] = run.GetAdjustedRealTime();
        }
    }
    ConsoleReporter::ReportRuns(shown);
}

void RatioReport::Finalize() {
    std::printf("\n%-48s %8s  %s\n", "Ratio of the medians", "here", "wanted");
    for (const Ratio& ratio : ratios_) {
        const auto dividend = medians_.find(ratio.dividend);
        const auto divisor = medians_.find(ratio.divisor);
        if (dividend != medians_.end() && divisor != medians_.end()) {
            std::printf("%-48s %8.3f  %s\n", ratio.title.c_str(),
                        dividend->second / divisor->second, ratio.target.c_str());
        }
    }
}

} // namespace bench
