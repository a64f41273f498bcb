// What Visual Studio links into every program and DLL from its own static libraries, as far as the
// border needs it: the start of a DLL, memory, and what the compiler refers to by itself.

#include <cstdlib>
#include <new>
#include <string>

// The compiler refers to it wherever there is floating point.
extern "C" int _fltused = 1;

extern "C" int __stdcall _DllMainCRTStartup(void*, unsigned long, void*) {
    return 1;
}

void* operator new(std::size_t size) {
    return std::malloc(size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

// The description of every thrown type begins with the table of type_info, which nobody calls here.
extern "C" const void* const typeInfoTable[1] __asm__("??_7type_info@@6B@") = {nullptr};

template class std::basic_string<char>;
