#include "bench/step_loop.h"
#include "create_solver.h"
#include "host/solver.h"
#include "platform/files.h"
#include "reference_host/simulation.h"

#include <vector>

namespace bench {

namespace {

/// Variables that the host holds as one table: the elements of a vector, or one scalar.
struct HostTable {
    std::string name;
    int size = 0;
    TupleArray<double>* values = nullptr;
};

/// "F[1]", "F[2]", "F[3]" become the vector "F".
std::vector<HostTable> hostTables(const std::vector<Variable>& variables) {
    std::vector<HostTable> tables;
    for (const Variable& variable : variables) {
        const std::string name = variable.name.substr(0, variable.name.find('['));
        if (tables.empty() || tables.back().name != name) {
            tables.push_back({name});
        }
        ++tables.back().size;
    }
    return tables;
}

bool areVectors(const std::vector<HostTable>& tables) {
    return !tables.empty() && tables.front().size > 1;
}

class PluginLoop : public StepLoop {
  public:
    PluginLoop(const Workload& workload, const std::filesystem::path& directory)
        : inputs_(hostTables(workload.inputs)) {
        for (HostTable& input : inputs_) {
            input.values = &simulation_.addCoupledCondition(input.name, input.size);
        }
        const auto outputs = hostTables(workload.outputs);
        for (const HostTable& output : outputs) {
            simulation_.addOutputResult(output.name, output.name, output.size);
        }
        simulation_.setWorkingDirectory(platform::narrowPath(directory));
        simulation_.setModelFilePath(platform::narrowPath(directory / "model"));
        simulation_.setCommandLine('"' + platform::narrowPath(workload.archive) + '"' +
                                   (areVectors(outputs) ? " -outputsarearrays" : ""));
        start();
    }

    ~PluginLoop() override { solver_->terminate(); }

    PluginLoop(const PluginLoop&) = delete;
    PluginLoop& operator=(const PluginLoop&) = delete;
    PluginLoop(PluginLoop&&) = delete;
    PluginLoop& operator=(PluginLoop&&) = delete;

    void step(double time) override {
        std::size_t index = 0;
        for (const HostTable& input : inputs_) {
            for (int component = 0; component < input.size; ++component) {
                input.values->setValue(0, component, inputValue(index++, time));
            }
        }
        solver_->applyInputs(time);
        solver_->solveTo(time);
        solver_->writeOutputs(time);
        requireSuccess(-simulation_.failureCode());
    }

  private:
    void start() {
        solver_->parseCommandLine(simulation_.modelManager());
        solver_->setUp(simulation_.modelManager());
        solver_->applyInitialInputs(0);
        solver_->start();
        solver_->writeInitialOutputs(0);
        requireSuccess(-simulation_.failureCode());
    }

    reference_host::Simulation simulation_;
    std::vector<HostTable> inputs_;
    std::unique_ptr<Solver> solver_{createSolver()};
};

} // namespace

std::unique_ptr<StepLoop> makePluginLoop(const Workload& workload,
                                         const std::filesystem::path& directory) {
    return std::make_unique<PluginLoop>(workload, directory);
}

} // namespace bench
