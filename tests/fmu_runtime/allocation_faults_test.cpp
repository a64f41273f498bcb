// Every allocation of a run fails once: in the runtime, and where the platform lets this program
// replace operator new everywhere, also in the import library and in the FMU.
#include "fmu_runtime/whole_run.h"
#include "support/failing_allocator.h"

#include <gtest/gtest.h>

namespace {

using namespace failing_allocator;
using namespace test_support;

bool runWithFailure(const WholeRun& run, long number) {
    failAllocation(number);
    const Counting counting;
    return run.run();
}

TEST(Allocation, FailsWithoutCrashLeakOrWrongSuccess) {
    const WholeRun run;
    ASSERT_TRUE(run.run());
    const std::string results = run.results();
    long failures = 0;
    for (long number = 1; number == 1 || hasFailed(); ++number) {
        const std::ptrdiff_t before = liveAllocations();
        const bool succeeded = runWithFailure(run, number);
        EXPECT_EQ(liveAllocations(), before) << "allocation " << number;
        EXPECT_TRUE(!succeeded || run.results() == results) << "allocation " << number;
        failures += succeeded ? 0 : 1;
    }
    EXPECT_GT(failures, 10);
}

} // namespace
