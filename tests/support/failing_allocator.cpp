#include "support/failing_allocator.h"

#include <cstdlib>
#include <new>

namespace {

long untilFailure = 0;
bool counting = false;
bool failed = false;
std::ptrdiff_t live = 0;

void* allocate(std::size_t size) noexcept {
    if (counting && untilFailure > 0 && --untilFailure == 0) {
        failed = true;
        return nullptr;
    }
    ++live;
    return std::malloc(size > 0 ? size : 1);
}

void release(void* memory) noexcept {
    live -= memory != nullptr ? 1 : 0;
    std::free(memory);
}

} // namespace

namespace failing_allocator {

void failAllocation(long number) {
    untilFailure = number;
    failed = false;
}

bool hasFailed() {
    return failed;
}

Counting::Counting() {
    counting = true;
}

Counting::~Counting() {
    counting = false;
}

std::ptrdiff_t liveAllocations() {
    return live;
}

} // namespace failing_allocator

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

void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
    release(memory);
}
