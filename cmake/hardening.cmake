# What makes a fault in our code hard to use by who feeds us archives, descriptions and FMUs. A test
# (tests/package/check_binaries) reads it from the files.

if(MSVC)
  target_compile_options(project_settings INTERFACE /guard:cf)
  target_link_options(project_settings INTERFACE /guard:cf /DYNAMICBASE /HIGHENTROPYVA /NXCOMPAT)
elseif(WIN32)
  # GCC has no control-flow guard for Windows.
  target_link_options(project_settings INTERFACE
    LINKER:--dynamicbase,--high-entropy-va,--nxcompat)
elseif(NOT FMI_SOLVER_SANITIZE AND NOT FMI_SOLVER_COVERAGE)
  # The checked functions of the C library need an optimising compiler.
  target_compile_options(project_settings INTERFACE -fstack-protector-strong
    "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
endif()

if(NOT WIN32)
  include(CheckPIESupported)
  check_pie_supported()
  target_link_options(project_settings INTERFACE LINKER:-z,relro,-z,now,-z,noexecstack)
endif()
