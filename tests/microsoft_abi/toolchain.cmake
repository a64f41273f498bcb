# Toolchain: objects for Windows x86-64 in the Microsoft ABI, compiled on Linux by clang-cl. CMake takes
# it for Visual Studio and compiles as the project says for that. Nothing can be linked: of Microsoft's
# C++ library there is nothing here, and of its C library the headers that Wine has.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

include("${CMAKE_CURRENT_LIST_DIR}/compiler.cmake")
foreach(language C CXX)
  set(CMAKE_${language}_COMPILER "${llvm}/bin/clang-cl")
  set(CMAKE_${language}_COMPILER_TARGET x86_64-pc-windows-msvc)
  set(CMAKE_${language}_FLAGS_RELEASE "/Od" CACHE STRING "")
endforeach()
set(CMAKE_AR "${llvm}/bin/llvm-lib")
set(CMAKE_LINKER "${llvm}/bin/lld-link")
set(CMAKE_RC_COMPILER "${llvm}/bin/llvm-rc")
set(CMAKE_MT "${llvm}/bin/llvm-mt")

list(JOIN c_options " " CMAKE_C_FLAGS_INIT)
list(JOIN cxx_options " " CMAKE_CXX_FLAGS_INIT)
