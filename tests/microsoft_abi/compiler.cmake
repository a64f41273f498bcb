# The compiler of the Microsoft ABI and where it finds its headers: c_options and cxx_options.

set(llvm /usr/lib/llvm-22)
file(GLOB clang_headers "${llvm}/lib/clang/*/include")

# libc++ first, because its C headers wrap those that follow; then ours, which complete Wine's.
set(c_headers "${CMAKE_CURRENT_LIST_DIR}/headers" "${clang_headers}"
    /usr/include/wine/wine/msvcrt /usr/include/wine/wine/windows)
list(TRANSFORM c_headers PREPEND "-imsvc")
# Extensions of GNU's compiler, which clang would take in this ABI, too, are none of Visual Studio's.
set(c_options /X -nobuiltininc ${c_headers} -Wgnu)
# Microsoft's iterators of arrays and texts are classes; libc++'s are pointers unless told otherwise.
set(cxx_options /X -nobuiltininc "-imsvc${llvm}/include/c++/v1" ${c_headers} -Wgnu
    -D_LIBCPP_ABI_USE_WRAP_ITER_IN_STD_ARRAY -D_LIBCPP_ABI_USE_WRAP_ITER_IN_STD_STRING_VIEW)
