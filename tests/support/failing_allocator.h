#pragma once

#include <cstddef>

/// Takes the place of operator new and delete in a test program.
namespace failing_allocator {

/// Lets the allocation with this number fail, counted from 1 and from now on; 0: none.
void failAllocation(long number);

/// True when the allocation that was to fail has been asked for.
bool hasFailed();

/// Counts allocations only while there is one of these.
class Counting {
  public:
    Counting();
    ~Counting();
    Counting(const Counting&) = delete;
    Counting& operator=(const Counting&) = delete;
    Counting(Counting&&) = delete;
    Counting& operator=(Counting&&) = delete;
};

/// Number of allocations that have not been given back.
std::ptrdiff_t liveAllocations();

} // namespace failing_allocator
