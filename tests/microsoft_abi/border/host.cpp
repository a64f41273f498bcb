// A host on the other side of the border. Where it calls the solver or is called by it in a way that
// the ABI decides, it does by hand what the ABI says, in plain functions: a table of functions is an
// array, `this` is the first argument, and the place for a returned object is the second.

#include "host/coupled_condition.h"
#include "host/logger.h"
#include "host/model_setup.h"
#include "host/result.h"
#include "host/solver.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>
#include <string>
#include <windows.h>

namespace {

// An object whose table of functions is built by hand, in the place of a TupleArray<double>.
struct Table {
    const void* const* functions;
    std::array<std::array<double, 3>, 4> values;
};

double getValue(const Table* table, int tuple, int component) {
    return table->values[tuple][component];
}

void setValue(Table* table, int tuple, int component, double value) {
    table->values[tuple][component] = value;
}

std::string* logged = nullptr;
Table* values = nullptr;
int failures = 0;

void expect(bool isMet, const char* what) {
    std::printf("%s: %s\n", isMet ? "ok" : "FAILED", what);
    failures += isMet ? 0 : 1;
}

template <typename T>
T& anything() {
    static char memory[1];
    return reinterpret_cast<T&>(memory);
}

// Calls the function in a slot of the solver's table as a function of C.
template <typename... Arguments>
void callSlot(Solver* solver, int slot, Arguments... arguments) {
    void* const* functions = *reinterpret_cast<void* const**>(solver);
    reinterpret_cast<void (*)(Solver*, Arguments...)>(functions[slot])(solver, arguments...);
}

void checkSlots(Solver* solver) {
    ModelManager* manager = &anything<ModelManager>();
    solver->setModelManager(manager);
    callSlot(solver, 1);
    callSlot(solver, 2, manager);
    callSlot(solver, 3, manager);
    callSlot(solver, 4, 7);
    callSlot(solver, 5);
    callSlot(solver, 6, 8);
    callSlot(solver, 7, 0.25);
    callSlot(solver, 8, 0.5);
    callSlot(solver, 9, 1.5);
    callSlot(solver, 10);
    expect(*logged == "printBanner;parseCommandLine;setUp;applyInitialInputs;"
                      "start a name that is longer than any text inside its object;"
                      "writeInitialOutputs;applyInputs;solveTo;writeOutputs;terminate;",
           "the operations in the order of their slots, and a text returned by value");
    expect(values->values[3][2] == 0.25 && values->values[0][1] == 0.75 &&
               values->values[0][0] == 1.5,
           "both entries of the tuple array");
}

void checkException(Solver* solver) {
    const char* caught = "nothing";
    char text[64] = "";
    try {
        solver->solveTo(-1);
    } catch (const std::exception& error) {
        caught = std::strcpy(text, error.what());
    }
    expect(std::strcmp(caught, "There is no way back") == 0, "an exception across the border");
}

void checkDeletion(Solver* solver) {
    logged->clear();
    delete solver;
    expect(*logged == "~BorderSolver;~Solver;", "deletion through the virtual destructor");
}

} // namespace

struct Solver::State {
    ModelManager* modelManager;
};

Solver::Solver() : state_(new State{nullptr}) {}

Solver::~Solver() {
    delete state_;
    *logged += "~Solver;";
}

void Solver::setModelManager(ModelManager* modelManager) {
    state_->modelManager = modelManager;
}

ModelManager* Solver::getModelManager() const {
    return state_->modelManager;
}

ModelSetup* Solver::getModelSetup() const {
    return &anything<ModelSetup>();
}

CoupledCondition* ModelSetup::getCoupledCondition(std::size_t index) const {
    return index == 1 ? &anything<CoupledCondition>() : nullptr;
}

Result* CoupledCondition::getResult() const {
    return &anything<Result>();
}

TupleArray<double>* Result::getValues() const {
    return reinterpret_cast<TupleArray<double>*>(values);
}

Logger* Logger::get() {
    return &anything<Logger>();
}

void Logger::log(Level level, const std::string& text) {
    expect(level == info, "the level of a line");
    *logged += text + ";";
}

// Exported as Object::getName.
extern "C" std::string* nameOfObject(const Object* object, std::string* place) {
    const void* condition = &anything<CoupledCondition>();
    return new (place) std::string(
        object == condition ? "a name that is longer than any text inside its object" : "nobody");
}

extern "C" void mainCRTStartup() {
    const void* functions[] = {reinterpret_cast<const void*>(getValue),
                               reinterpret_cast<const void*>(setValue)};
    Table table = {functions, {}};
    std::string text;
    values = &table;
    logged = &text;
    HMODULE library = LoadLibraryA("border_solver.dll");
    auto* create = reinterpret_cast<Solver* (*)()>(GetProcAddress(library, "createSolver"));
    expect(create != nullptr, "createSolver");
    if (create != nullptr) {
        Solver* solver = create();
        checkSlots(solver);
        checkException(solver);
        checkDeletion(solver);
    }
    std::fflush(stdout);
    ExitProcess(failures);
}
