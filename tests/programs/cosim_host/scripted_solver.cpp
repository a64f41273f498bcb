// A solver that prints what the host asks of it, and fails as its command line says: "OPERATION
// CODE" reports a failure code, "OPERATION throw" throws.

#include "create_solver.h"
#include "host/model_manager.h"
#include "host/parameters.h"
#include "host/solution.h"
#include "host/solution_settings.h"
#include "host/solver.h"
#include "host/solver_settings.h"

#include <cstdio>
#include <stdexcept>
#include <string>

namespace {

class ScriptedSolver : public Solver {
  public:
    ScriptedSolver() = default;

    ~ScriptedSolver() override { std::puts("deleted"); }

    ScriptedSolver(const ScriptedSolver&) = delete;
    ScriptedSolver& operator=(const ScriptedSolver&) = delete;
    ScriptedSolver(ScriptedSolver&&) = delete;
    ScriptedSolver& operator=(ScriptedSolver&&) = delete;

    void printBanner() override { std::puts("printBanner"); }

    void parseCommandLine(ModelManager* manager) override {
        setModelManager(manager);
        char** argv = nullptr;
        convertToArgcArgv(
            getSolverSettings()->getSolverSettingParameters()->getStringParameter(3).c_str(), argc_,
            argv);
        operation_ = argc_ > 0 ? argv[0] : "";
        failure_ = argc_ > 1 ? argv[1] : "";
        perform("parseCommandLine");
    }

    void setUp(ModelManager*) override { perform("setUp"); }

    void applyInitialInputs(int) override { perform("applyInitialInputs"); }

    void start() override { perform("start"); }

    void writeInitialOutputs(int) override { perform("writeInitialOutputs"); }

    void applyInputs(double time) override { perform("applyInputs", time); }

    void solveTo(double time) override { perform("solveTo", time); }

    void writeOutputs(double time) override { perform("writeOutputs", time); }

    void terminate() override { perform("terminate"); }

  private:
    void perform(const std::string& operation, double time = 0.0) {
        std::printf("%s %g\n", operation.c_str(), time);
        if (operation != operation_) {
            return;
        }
        if (failure_ == "throw") {
            throw std::runtime_error("as told");
        }
        getModelManager()->getSolution()->getSolutionSettings()->getParameters()->setParameter(
            11, std::stoi(failure_));
    }

    int argc_ = 0;
    std::string operation_;
    std::string failure_;
};

} // namespace

Solver* createSolver() {
    return new ScriptedSolver;
}
