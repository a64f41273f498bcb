#pragma once

// The classes of a host that looks nothing like the reference host: its data lies inside the objects,
// some have virtual operations, all have other sizes. In common with host/ it has the names and
// signatures of what a solver calls, and the order of the virtual operations of Solver and TupleArray.

#include <array>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

class Logger {
  public:
    enum Level { silent = 0, info = 3, everything = 100 };

    static Logger* get();
    void log(Level level, const std::string& text);

    std::vector<std::string> lines;
};

class Object {
  public:
    explicit Object(std::string name);
    virtual ~Object() = default;
    std::string getName() const;

    std::array<double, 5> position{};
    std::string name;
};

class PhysicalQuantity : public Object {
  public:
    PhysicalQuantity(const std::string& name, int size);
    int getSize() const;

    int size;
};

template <typename T>
class TupleArray {
  public:
    virtual T getValue(int tuple, int component) const = 0;
    virtual void setValue(int tuple, int component, T value) = 0;
    virtual ~TupleArray() = default;
};

class Values : public TupleArray<double> {
  public:
    double getValue(int tuple, int component) const override;
    void setValue(int tuple, int component, double value) override;

    std::map<int, double> components;
};

class Result {
  public:
    Result(const std::string& quantityName, int size);
    TupleArray<double>* getValues() const;
    PhysicalQuantity* getPhysicalQuantity() const;

    long long number = 0;
    std::unique_ptr<Values> values = std::make_unique<Values>();
    std::unique_ptr<PhysicalQuantity> quantity;
};

class Exchanged : public Object {
  public:
    Exchanged(const std::string& name, int size);
    Result* getResult() const;

    std::unique_ptr<Result> result;
};

class CoupledCondition : public Exchanged {
  public:
    using Exchanged::Exchanged;
};

class OutputResult : public Exchanged {
  public:
    using Exchanged::Exchanged;
};

class ModelSetup {
  public:
    std::size_t getNumberOfCoupledConditions() const;
    CoupledCondition* getCoupledCondition(std::size_t index) const;
    std::size_t getNumberOfOutputResults() const;
    OutputResult* getOutputResult(std::size_t index) const;

    std::vector<std::unique_ptr<CoupledCondition>> conditions;
    std::vector<std::unique_ptr<OutputResult>> outputs;
};

class Parameters {
  public:
    virtual ~Parameters() = default;
    int getIntParameter(int index) const;
    void setParameter(int index, int value);
    std::string getStringParameter(int index) const;

    std::map<int, int> integers;
    std::map<int, std::string> texts;
};

class Options {
  public:
    bool getOption(int index) const;

    std::array<bool, 16> switches{};
};

class SolutionSettings {
  public:
    Parameters* getParameters() const;
    Options* getOptions() const;

    std::unique_ptr<Parameters> parameters = std::make_unique<Parameters>();
    std::unique_ptr<Options> options = std::make_unique<Options>();
};

class SolverSettings {
  public:
    Parameters* getSolverSettingParameters() const;
    Options* getSolverSettingOptions() const;

    std::unique_ptr<Parameters> parameters = std::make_unique<Parameters>();
    std::unique_ptr<Options> options = std::make_unique<Options>();
};

class Solution {
  public:
    SolutionSettings* getSolutionSettings() const;

    std::string title = "a run";
    std::unique_ptr<SolutionSettings> settings = std::make_unique<SolutionSettings>();
};

class SimulationDataModel {
  public:
    std::array<double, 3> gravity{};
};

class ModelManager {
  public:
    virtual ~ModelManager() = default;
    Solution* getSolution() const;

    std::unique_ptr<Solution> solution = std::make_unique<Solution>();
    SolverSettings solverSettings;
    ModelSetup modelSetup;
    SimulationDataModel model;
};

class Solver {
  public:
    Solver();
    virtual ~Solver();
    virtual void printBanner() = 0;
    virtual void parseCommandLine(ModelManager* modelManager) = 0;
    virtual void setUp(ModelManager* modelManager) = 0;
    virtual void applyInitialInputs(int iteration) = 0;
    virtual void start() = 0;
    virtual void writeInitialOutputs(int iteration) = 0;
    virtual void applyInputs(double time) = 0;
    virtual void solveTo(double time) = 0;
    virtual void writeOutputs(double time) = 0;
    virtual void terminate() = 0;
    Solver(const Solver&) = delete;
    Solver& operator=(const Solver&) = delete;

    void setModelManager(ModelManager* modelManager);
    ModelManager* getModelManager() const;
    SolverSettings* getSolverSettings() const;
    SolutionSettings* getSolutionSettings() const;
    SimulationDataModel* getMyModel() const;
    ModelSetup* getModelSetup() const;
    void convertToArgcArgv(const char* commandLine, int& argc, char**& argv);
    void debugPrintArgcArgv(int argc, char** argv) const;

    std::string label = "a solver of this host";
    ModelManager* manager = nullptr;
    std::vector<std::string> arguments;
    std::vector<char*> argumentPointers;
    std::array<double, 32> statistics{};
};
