#include "support/memory_end.h"

#include <new>
#include <sys/mman.h>
#include <unistd.h>

namespace test_support {

namespace {

std::size_t pageSize() {
    return static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

} // namespace

MemoryEnd::MemoryEnd(std::string_view text) {
    void* pages =
        mmap(nullptr, 2 * pageSize(), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED) {
        throw std::bad_alloc();
    }
    pages_ = static_cast<char*>(pages);
    char* const end = pages_ + pageSize();
    text_ = end - text.size();
    text.copy(end - text.size(), text.size());
    mprotect(end, pageSize(), PROT_NONE);
}

MemoryEnd::~MemoryEnd() {
    munmap(pages_, 2 * pageSize());
}

} // namespace test_support
