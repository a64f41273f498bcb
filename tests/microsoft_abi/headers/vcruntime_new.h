// Stands in for <vcruntime_new.h>: the operators for memory.
#pragma once

#include <stddef.h>

namespace std {

enum class align_val_t : size_t {};

struct nothrow_t {
    explicit nothrow_t() = default;
};

extern const nothrow_t nothrow;

} // namespace std

void* __cdecl operator new(size_t);
void* __cdecl operator new[](size_t);
void* __cdecl operator new(size_t, const std::nothrow_t&) noexcept;
void* __cdecl operator new[](size_t, const std::nothrow_t&) noexcept;
void* __cdecl operator new(size_t, std::align_val_t);
void* __cdecl operator new[](size_t, std::align_val_t);
void* __cdecl operator new(size_t, std::align_val_t, const std::nothrow_t&) noexcept;
void* __cdecl operator new[](size_t, std::align_val_t, const std::nothrow_t&) noexcept;
void __cdecl operator delete(void*) noexcept;
void __cdecl operator delete[](void*) noexcept;
void __cdecl operator delete(void*, size_t) noexcept;
void __cdecl operator delete[](void*, size_t) noexcept;
void __cdecl operator delete(void*, const std::nothrow_t&) noexcept;
void __cdecl operator delete[](void*, const std::nothrow_t&) noexcept;
void __cdecl operator delete(void*, std::align_val_t) noexcept;
void __cdecl operator delete[](void*, std::align_val_t) noexcept;
void __cdecl operator delete(void*, size_t, std::align_val_t) noexcept;
void __cdecl operator delete[](void*, size_t, std::align_val_t) noexcept;

inline void* __cdecl operator new(size_t, void* place) noexcept {
    return place;
}

inline void* __cdecl operator new[](size_t, void* place) noexcept {
    return place;
}

inline void __cdecl operator delete(void*, void*) noexcept {}

inline void __cdecl operator delete[](void*, void*) noexcept {}
