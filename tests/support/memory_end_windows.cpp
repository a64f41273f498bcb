#include "support/memory_end.h"

#include <new>
#include <windows.h>

namespace test_support {

namespace {

constexpr std::size_t pageSize = 4096;

} // namespace

// Of what is reserved only the first page is backed by memory.
MemoryEnd::MemoryEnd(std::string_view text) {
    void* pages = VirtualAlloc(nullptr, 2 * pageSize, MEM_RESERVE, PAGE_NOACCESS);
    if (pages == nullptr || VirtualAlloc(pages, pageSize, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
        throw std::bad_alloc();
    }
    pages_ = static_cast<char*>(pages);
    char* const begin = pages_ + pageSize - text.size();
    text_ = begin;
    text.copy(begin, text.size());
}

MemoryEnd::~MemoryEnd() {
    VirtualFree(pages_, 0, MEM_RELEASE);
}

} // namespace test_support
