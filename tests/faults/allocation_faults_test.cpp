// Every allocation of a run fails once: in the runtime, and where the platform lets this program
// replace operator new everywhere, also in the import library and in the FMU.
#include "faults/whole_run.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

namespace {

long allocationsLeft = 0; // Until the one that fails; 0: none fails.
std::ptrdiff_t liveAllocations = 0;

void* allocate(std::size_t size) noexcept {
    if (allocationsLeft > 0 && --allocationsLeft == 0) {
        return nullptr;
    }
    ++liveAllocations;
    return std::malloc(size > 0 ? size : 1);
}

void release(void* memory) noexcept {
    liveAllocations -= memory != nullptr ? 1 : 0;
    std::free(memory);
}

} // namespace

void* operator new(std::size_t size) {
    void* memory = allocate(size);
    return memory != nullptr ? memory : throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return allocate(size);
}

void operator delete(void* memory) noexcept {
    release(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    release(memory);
}

namespace {

using namespace test_support;

TEST(Allocation, FailsWithoutCrashLeakOrWrongSuccess) {
    const WholeRun run;
    ASSERT_TRUE(run.run());
    const std::string results = run.results();
    bool happened = true;
    long failures = 0;
    for (long number = 1; happened; ++number) {
        const std::ptrdiff_t before = liveAllocations;
        allocationsLeft = number;
        const bool succeeded = run.run();
        happened = allocationsLeft == 0;
        allocationsLeft = 0;
        EXPECT_EQ(liveAllocations, before) << "allocation " << number;
        EXPECT_TRUE(!succeeded || run.results() == results) << "allocation " << number;
        failures += succeeded ? 0 : 1;
    }
    EXPECT_GT(failures, 10);
}

} // namespace
