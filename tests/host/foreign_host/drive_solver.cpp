// Loads a solver and drives it through every operation, once as it should be and once with an FMU that
// is not of the declared kind:
//   drive_solver SOLVER_LIBRARY FMU DIRECTORY
#include "foreign_host.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

using Factory = Solver* (*)();

constexpr int workingDirectory = 1;
constexpr int modelFilePath = 2;
constexpr int commandLine = 3;
constexpr int status = 11;

void expect(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "drive_solver: not so: %s\n", what);
        std::exit(1);
    }
}

/// A run with input u = 3 and output x.
struct Host {
    Host(const std::string& fmu, const std::string& directory, const std::string& options) {
        auto& ownTexts = manager.solverSettings.parameters->texts;
        ownTexts[workingDirectory] = directory;
        ownTexts[commandLine] = fmu + " " + options;
        manager.solution->settings->parameters->texts[modelFilePath] = directory + "/case.xml";
        auto& setup = manager.modelSetup;
        setup.conditions.push_back(std::make_unique<CoupledCondition>("u", 1));
        setup.conditions.front()->result->values->setValue(0, 0, 3.0);
        setup.outputs.push_back(std::make_unique<OutputResult>("x", 1));
    }

    [[nodiscard]] int failureCode() const {
        return manager.solution->settings->parameters->getIntParameter(status);
    }

    [[nodiscard]] double x() const {
        return manager.modelSetup.outputs.front()->result->values->getValue(0, 0);
    }

    ModelManager manager;
};

void runToTheEnd(Host& host, Solver& solver) {
    solver.printBanner();
    solver.parseCommandLine(&host.manager);
    solver.setUp(&host.manager);
    solver.applyInitialInputs(0);
    solver.start();
    solver.writeInitialOutputs(0);
    for (const double time : {0.25, 0.5}) {
        solver.applyInputs(time);
        solver.solveTo(time);
        solver.writeOutputs(time);
    }
    expect(host.failureCode() == 0, "no operation failed");
    expect(std::abs(host.x() - 2.0 * 3.0 * 0.5) < 1e-12, "the output is gain * u * t");
    const auto& lines = Logger::get()->lines;
    expect(lines.at(0).rfind("3 FMISolver ", 0) == 0, "the banner is in the host's log");
    solver.writeInitialOutputs(0);
    solver.terminate();
    solver.solveTo(1.0);
    expect(host.failureCode() == 5, "a step after the end has failed");
    expect(solver.label == "a solver of this host", "the host's own members are as they were");
}

void meetTheWrongKind(Host& host, Solver& solver) {
    solver.parseCommandLine(&host.manager);
    solver.setUp(&host.manager);
    std::string message;
    try {
        solver.start();
    } catch (const std::runtime_error& error) {
        message = error.what();
    }
    expect(message == "Unexpected FMUType. FMU does not match type: FTIRE",
           "the mismatch is thrown");
    solver.terminate();
}

} // namespace

int main(int argc, char** argv) {
    expect(argc == 4, "three arguments are given");
    void* library = dlopen(argv[1], RTLD_NOW);
    expect(library != nullptr, "the solver's library can be loaded");
    const auto createSolver = reinterpret_cast<Factory>(dlsym(library, "createSolver"));
    expect(createSolver != nullptr, "it has a factory");

    Host whole(argv[2], argv[3], "-parameter gain 2");
    const std::unique_ptr<Solver> first(createSolver());
    runToTheEnd(whole, *first);
    Host mismatched(argv[2], argv[3], "-fmutype FTIRE");
    const std::unique_ptr<Solver> second(createSolver());
    meetTheWrongKind(mismatched, *second);
    return 0;
}
