#pragma once

// A host calls its solvers through the table of virtual operations alone, and this header needs no
// other. Strings and exceptions cross the border too, so host and solver must be built by compilers
// that agree on C++ classes: a host built by Visual Studio takes solvers built by Visual Studio.

class ModelManager;
class ModelSetup;
class SimulationDataModel;
class SolutionSettings;
class SolverSettings;

/// A solver as the host framework drives it.
///
/// The host calls the virtual operations in the order in which they stand here: printBanner to
/// writeInitialOutputs once; then applyInputs, solveTo and writeOutputs for each communication
/// step; terminate at the end; and then deletes the solver. Their order is the order of the table
/// through which the host calls them and must not change.
///
/// An operation from setUp on reports failure by writing a code into integer parameter 11 of the
/// solution's parameters, and returns normally. parseCommandLine and start may also throw a
/// std::exception, which the host catches.
class Solver {
  public:
    /// Makes a solver that has no model manager yet.
    Solver();
    virtual ~Solver();

    /// Logs what the solver is and how it was built.
    virtual void printBanner() = 0;

    /// Reads the solver's own command line, string parameter 3 of the solver settings.
    virtual void parseCommandLine(ModelManager* modelManager) = 0;

    /// Prepares the run: paths, files, models to load.
    virtual void setUp(ModelManager* modelManager) = 0;

    /// Takes the coupled conditions' values at the start of the run. `iteration` counts the host's
    /// passes over the initial state, from 0.
    virtual void applyInitialInputs(int iteration) = 0;

    /// Starts the solver with its parameters set.
    virtual void start() = 0;

    /// Puts the values at the start of the run into the output results. `iteration` as in
    /// applyInitialInputs.
    virtual void writeInitialOutputs(int iteration) = 0;

    /// Takes the coupled conditions' values for the step that begins at `time` (seconds).
    virtual void applyInputs(double time) = 0;

    /// Advances the solver to `time` (seconds), the end of the communication step.
    virtual void solveTo(double time) = 0;

    /// Puts the values at `time` (seconds), the end of the step, into the output results.
    virtual void writeOutputs(double time) = 0;

    /// Ends the run and releases what it holds.
    virtual void terminate() = 0;

    Solver(const Solver&) = delete;
    Solver& operator=(const Solver&) = delete;
    Solver(Solver&&) = delete;
    Solver& operator=(Solver&&) = delete;

    /// Remembers the model manager, which stays the host's. The operations below answer from it.
    void setModelManager(ModelManager* modelManager);

    /// The model manager; null before one was set. Borrowed from the host like every object below.
    ModelManager* getModelManager() const;

    /// Settings of this solver; null without a model manager, or when the host has none.
    SolverSettings* getSolverSettings() const;

    /// Settings of the whole run; null without a model manager.
    SolutionSettings* getSolutionSettings() const;

    /// The host's model; null without a model manager.
    SimulationDataModel* getMyModel() const;

    /// Coupled conditions and output results of the host's model; null without a model manager.
    ModelSetup* getModelSetup() const;

    /// Splits a command line into its arguments. How is the host's; the reference host separates
    /// them at blanks, tabs and line ends, lets double quotes hold those together and drops the
    /// quotes. Single quotes and backslashes are characters like any other to it.
    ///
    /// @param commandLine the text; null counts as empty
    /// @param argc receives the number of arguments
    /// @param argv receives the arguments, followed by a null entry. They belong to this solver:
    ///             valid until its next call of this operation or its end, and not to be freed by
    ///             the caller.
    void convertToArgcArgv(const char* commandLine, int& argc, char**& argv);

    /// Logs the arguments, one a line, for whoever wonders how a command line was split.
    void debugPrintArgcArgv(int argc, char** argv) const;

  private:
    struct State;
    State* state_;
};
