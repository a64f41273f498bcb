#pragma once

#include "host/model_manager.h"
#include "host/tuple_array.h"

#include <memory>
#include <string>

namespace reference_host {

/// A run as a host holds it: the model manager and everything that hangs from it. Solvers borrow
/// all of it, so it must outlive them.
class Simulation {
  public:
    Simulation();
    ~Simulation();
    Simulation(const Simulation&) = delete;
    Simulation& operator=(const Simulation&) = delete;
    Simulation(Simulation&&) = delete;
    Simulation& operator=(Simulation&&) = delete;

    /// What the solver's operations are called with.
    ModelManager* modelManager();

    /// Directory in which the solver works and writes (solver string parameter 1).
    void setWorkingDirectory(const std::string& directory);

    /// The solver's own command line (solver string parameter 3).
    void setCommandLine(const std::string& commandLine);

    /// The host's model file, whose directory holds what solvers look for beside it (solution
    /// string parameter 2).
    void setModelFilePath(const std::string& path);

    /// Whether other solvers run along (solver option 1); false at first.
    void setCoupled(bool coupled);

    /// The two switches that make a solver's step operations do nothing: solution option 2 and
    /// solution integer parameter 12. False at first.
    void setStepSkipOption(bool skip);
    void setStepSkipParameter(bool skip);

    /// From now on the model manager hands out no solution. A solver still finds the settings of the
    /// run by Solver::getSolutionSettings().
    void withholdSolution();

    /// The code that the solver last reported a failure with (solution integer parameter 11); 0
    /// when it never did.
    [[nodiscard]] int failureCode() const;

    /// Makes the code 0, so that the next failure shows even when it has the code of the last one.
    void resetFailureCode();

    /// Adds a coupled condition whose value has `size` components, and a quantity of the same name.
    /// Tuple 0 of the returned array is what the solver reads; the array lives as long as this
    /// object.
    TupleArray<double>& addCoupledCondition(const std::string& name, int size);

    /// Adds an output result that measures `quantity`, whose value has `size` components. Tuple 0
    /// of the returned array is what the solver writes; the array lives as long as this object.
    TupleArray<double>& addOutputResult(const std::string& name, const std::string& quantity,
                                        int size);

  private:
    struct Objects;
    std::unique_ptr<Objects> objects_;
};

} // namespace reference_host
