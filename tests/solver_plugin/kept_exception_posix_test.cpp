// What a solver throws outlives the solver's library, for a host that keeps it and unloads first.
#include "host/solver.h"
#include "platform/shared_library.h"
#include "reference_host/simulation.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <exception>
#include <stdexcept>
#include <string>
#include <typeinfo>

namespace {

using namespace test_support;

const std::string solverLibrary = narrow(libraryPath("libfmi_solver"));

/// What the start of an FMU of the wrong kind throws.
std::exception_ptr mismatch(Solver& solver, ModelManager* manager) {
    solver.parseCommandLine(manager);
    solver.setUp(manager);
    std::exception_ptr kept;
    try {
        solver.start();
    } catch (const std::exception&) {
        kept = std::current_exception();
    }
    solver.terminate();
    return kept;
}

std::exception_ptr mismatchOfALoadedSolver() {
    const TemporaryDirectory directory;
    reference_host::Simulation host;
    host.setWorkingDirectory(narrow(directory.path()));
    host.setModelFilePath(narrow(directory / "case.xml"));
    host.setCommandLine("\"" + narrow(fmuPath("scripted")) + "\" -fmutype FTIRE");
    platform::SharedLibrary library;
    EXPECT_TRUE(library.open(solverLibrary)) << library.error();
    const auto createSolver = reinterpret_cast<Solver* (*)()>(library.symbol("createSolver"));
    Solver* solver = createSolver();
    std::exception_ptr kept = mismatch(*solver, host.modelManager());
    delete solver;
    return kept;
}

TEST(KindMismatch, OutlivesTheSolversLibrary) {
    const std::exception_ptr kept = mismatchOfALoadedSolver();
    ASSERT_EQ(dlopen(solverLibrary.c_str(), RTLD_NOLOAD | RTLD_LAZY), nullptr) << "not unloaded";
    try {
        std::rethrow_exception(kept);
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "Unexpected FMUType. FMU does not match type: FTIRE");
        EXPECT_EQ(typeid(error), typeid(std::runtime_error));
    }
}

} // namespace
