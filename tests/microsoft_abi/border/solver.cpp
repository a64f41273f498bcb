// A solver as the host sees one: it logs each call, and throws when it is told a time below zero.

#include "host/solver.h"

#include "create_solver.h"
#include "host/coupled_condition.h"
#include "host/logger.h"
#include "host/model_setup.h"
#include "host/result.h"
#include "host/tuple_array.h"

#include <stdexcept>
#include <string>

namespace {

class BorderSolver final : public Solver {
  public:
    ~BorderSolver() override { log("~BorderSolver"); }

    void printBanner() override { log("printBanner"); }

    void parseCommandLine(ModelManager* modelManager) override {
        log(modelManager == getModelManager() ? "parseCommandLine" : "another model manager");
    }

    void setUp(ModelManager* modelManager) override {
        log(modelManager == getModelManager() ? "setUp" : "another model manager");
    }

    void applyInitialInputs(int iteration) override {
        log(iteration == 7 ? "applyInitialInputs" : "another iteration");
    }

    void start() override {
        const std::string name = condition()->getName();
        log("start " + name);
    }

    void writeInitialOutputs(int iteration) override {
        log(iteration == 8 ? "writeInitialOutputs" : "another iteration");
    }

    void applyInputs(double time) override {
        log("applyInputs");
        values()->setValue(3, 2, time);
    }

    void solveTo(double time) override {
        if (time < 0) {
            throw std::runtime_error("There is no way back");
        }
        log("solveTo");
        values()->setValue(0, 1, values()->getValue(3, 2) + time);
    }

    void writeOutputs(double time) override {
        log("writeOutputs");
        values()->setValue(0, 0, time);
    }

    void terminate() override { log("terminate"); }

  private:
    static void log(const std::string& text) { Logger::get()->log(Logger::info, text); }

    CoupledCondition* condition() const { return getModelSetup()->getCoupledCondition(1); }

    TupleArray<double>* values() const { return condition()->getResult()->getValues(); }
};

} // namespace

Solver* createSolver() {
    return new BorderSolver;
}
