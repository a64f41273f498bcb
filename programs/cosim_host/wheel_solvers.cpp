#include "programs/cosim_host/wheel_solvers.h"

#include "platform/files.h"
#include "programs/support/run_log.h"

#include <cstddef>
#include <exception>
#include <stdexcept>
#include <string>

namespace cosim_host {

template <typename Operation>
void WheelSolvers::eachWheel(Operation operation) {
    for (const WheelSolver& wheel : wheels_) {
        wheel.simulation->resetFailureCode();
        try {
            operation(wheel);
        } catch (const std::exception& error) {
            fail(wheel, error.what());
        }
        requireNoFailure(wheel);
    }
}

void WheelSolvers::requireNoFailure(const WheelSolver& wheel) {
    const int code = wheel.simulation->failureCode();
    if (code != 0) {
        fail(wheel, "the solver reported failure code " + std::to_string(code));
    }
}

void WheelSolvers::fail(const WheelSolver& wheel, const std::string& problem) {
    throw std::runtime_error(wheel.wheel + ": " + problem + "; " +
                             program_support::reasonInLog(platform::narrowPath(wheel.files->log)));
}

void WheelSolvers::printBanner() {
    wheels_.front().solver->printBanner();
}

void WheelSolvers::parseCommandLine(ModelManager* /*ownManagersAreUsed*/) {
    eachWheel([](const WheelSolver& wheel) {
        wheel.solver->parseCommandLine(wheel.simulation->modelManager());
    });
}

void WheelSolvers::setUp(ModelManager* /*ownManagersAreUsed*/) {
    eachWheel([this](const WheelSolver& wheel) {
        ++setUpCount_;
        wheel.solver->setUp(wheel.simulation->modelManager());
    });
}

void WheelSolvers::applyInitialInputs(int iteration) {
    eachWheel(
        [iteration](const WheelSolver& wheel) { wheel.solver->applyInitialInputs(iteration); });
}

void WheelSolvers::start() {
    eachWheel([](const WheelSolver& wheel) { wheel.solver->start(); });
}

void WheelSolvers::writeInitialOutputs(int iteration) {
    eachWheel(
        [iteration](const WheelSolver& wheel) { wheel.solver->writeInitialOutputs(iteration); });
}

void WheelSolvers::applyInputs(double time) {
    eachWheel([time](const WheelSolver& wheel) { wheel.solver->applyInputs(time); });
}

void WheelSolvers::solveTo(double time) {
    eachWheel([time](const WheelSolver& wheel) { wheel.solver->solveTo(time); });
}

void WheelSolvers::writeOutputs(double time) {
    eachWheel([time](const WheelSolver& wheel) { wheel.solver->writeOutputs(time); });
}

void WheelSolvers::terminate() {
    std::exception_ptr first;
    for (std::size_t i = 0; i < setUpCount_; ++i) {
        wheels_[i].simulation->resetFailureCode();
        try {
            wheels_[i].solver->terminate();
            requireNoFailure(wheels_[i]);
        } catch (const std::exception&) {
            first = first ? first : std::current_exception();
        }
    }
    if (first) {
        std::rethrow_exception(first);
    }
}

} // namespace cosim_host
