# missing_packages: what of the compiler for the Microsoft ABI is not on this machine. Debian 12 has most
# of it in its security archive alone, so a machine may well be without.

set(llvm /usr/lib/llvm-22)
set(missing_packages "")
foreach(pair
    "clang-22=${llvm}/bin/clang-cl"
    "lld-22=${llvm}/bin/lld-link"
    "llvm-22=${llvm}/bin/llvm-dlltool"
    "libc++-22-dev=${llvm}/include/c++/v1/vector"
    "libwine-dev=/usr/include/wine/wine/msvcrt/stdio.h")
  string(REGEX MATCH "^([^=]+)=(.+)$" pair "${pair}")
  if(NOT EXISTS "${CMAKE_MATCH_2}")
    list(APPEND missing_packages ${CMAKE_MATCH_1})
  endif()
endforeach()
list(JOIN missing_packages " " missing_packages)
