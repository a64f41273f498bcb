# Lets clang lay out the host framework's interfaces for the Microsoft ABI and compares the tables with
# the order that hosts built by Visual Studio call through.

execute_process(
  COMMAND "${CLANG}" --target=x86_64-pc-windows-msvc -std=c++20 "-I${SOURCE_DIR}" -c
          -Xclang -fdump-vtable-layouts -Xclang -emit-llvm-only
          "${CMAKE_CURRENT_LIST_DIR}/virtual_tables.cpp"
  OUTPUT_VARIABLE layouts ERROR_VARIABLE layouts COMMAND_ERROR_IS_FATAL ANY)

function(expect_table class)
  set(entries "0 | ${class} RTTI\n")
  set(slot 1)
  foreach(operation IN LISTS ARGN)
    string(APPEND entries "   ${slot} | ${operation}\n")
    math(EXPR slot "${slot} + 1")
  endforeach()
  string(REGEX REPLACE "\n +" "\n   " normalised "${layouts}")
  string(FIND "${normalised}" "VFTable for '${class}' (${slot} entries).\n   ${entries}" position)
  if(position EQUAL -1)
    message(FATAL_ERROR "${class} is not laid out as expected:\n${entries}but:\n${layouts}")
  endif()
endfunction()

expect_table(Solver
  "Solver::~Solver() [scalar deleting]"
  "void Solver::printBanner() [pure]"
  "void Solver::parseCommandLine(ModelManager *) [pure]"
  "void Solver::setUp(ModelManager *) [pure]"
  "void Solver::applyInitialInputs(int) [pure]"
  "void Solver::start() [pure]"
  "void Solver::writeInitialOutputs(int) [pure]"
  "void Solver::applyInputs(double) [pure]"
  "void Solver::solveTo(double) [pure]"
  "void Solver::writeOutputs(double) [pure]"
  "void Solver::terminate() [pure]")

expect_table(TupleArray
  "T TupleArray<double>::getValue(int, int) const [T = double] [pure]"
  "void TupleArray<double>::setValue(int, int, T) [T = double] [pure]")
