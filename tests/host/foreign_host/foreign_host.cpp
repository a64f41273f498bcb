#include "foreign_host.h"

#include <memory>
#include <sstream>
#include <string>
#include <utility>

Logger* Logger::get() {
    static Logger logger;
    return &logger;
}

void Logger::log(Level level, const std::string& text) {
    lines.push_back(std::to_string(level) + " " + text);
}

Object::Object(std::string objectName) : name(std::move(objectName)) {}

std::string Object::getName() const {
    return name;
}

PhysicalQuantity::PhysicalQuantity(const std::string& quantityName, int components)
    : Object(quantityName),
      size(components) {}

int PhysicalQuantity::getSize() const {
    return size;
}

double Values::getValue(int /*tuple*/, int component) const {
    const auto found = components.find(component);
    return found == components.end() ? 0.0 : found->second;
}

void Values::setValue(int /*tuple*/, int component, double value) {
    components[component] = value;
}

Result::Result(const std::string& quantityName, int size)
    : quantity(std::make_unique<PhysicalQuantity>(quantityName, size)) {}

TupleArray<double>* Result::getValues() const {
    return values.get();
}

PhysicalQuantity* Result::getPhysicalQuantity() const {
    return quantity.get();
}

Exchanged::Exchanged(const std::string& exchangedName, int size)
    : Object(exchangedName),
      result(std::make_unique<Result>("Length", size)) {}

Result* Exchanged::getResult() const {
    return result.get();
}

std::size_t ModelSetup::getNumberOfCoupledConditions() const {
    return conditions.size();
}

CoupledCondition* ModelSetup::getCoupledCondition(std::size_t index) const {
    return conditions.at(index).get();
}

std::size_t ModelSetup::getNumberOfOutputResults() const {
    return outputs.size();
}

OutputResult* ModelSetup::getOutputResult(std::size_t index) const {
    return outputs.at(index).get();
}

int Parameters::getIntParameter(int index) const {
    const auto found = integers.find(index);
    return found == integers.end() ? 0 : found->second;
}

void Parameters::setParameter(int index, int value) {
    integers[index] = value;
}

std::string Parameters::getStringParameter(int index) const {
    const auto found = texts.find(index);
    return found == texts.end() ? std::string() : found->second;
}

bool Options::getOption(int index) const {
    return switches.at(static_cast<std::size_t>(index));
}

Parameters* SolutionSettings::getParameters() const {
    return parameters.get();
}

Options* SolutionSettings::getOptions() const {
    return options.get();
}

Parameters* SolverSettings::getSolverSettingParameters() const {
    return parameters.get();
}

Options* SolverSettings::getSolverSettingOptions() const {
    return options.get();
}

SolutionSettings* Solution::getSolutionSettings() const {
    return settings.get();
}

Solution* ModelManager::getSolution() const {
    return solution.get();
}

Solver::Solver() = default;

Solver::~Solver() = default;

void Solver::setModelManager(ModelManager* modelManager) {
    manager = modelManager;
}

ModelManager* Solver::getModelManager() const {
    return manager;
}

SolverSettings* Solver::getSolverSettings() const {
    return &manager->solverSettings;
}

SolutionSettings* Solver::getSolutionSettings() const {
    return manager->solution->settings.get();
}

SimulationDataModel* Solver::getMyModel() const {
    return &manager->model;
}

ModelSetup* Solver::getModelSetup() const {
    return &manager->modelSetup;
}

/// Separates at blanks alone.
void Solver::convertToArgcArgv(const char* commandLine, int& argc, char**& argv) {
    std::istringstream words(commandLine);
    for (std::string word; words >> word;) {
        arguments.push_back(word);
    }
    for (std::string& argument : arguments) {
        argumentPointers.push_back(argument.data());
    }
    argc = static_cast<int>(arguments.size());
    argv = argumentPointers.data();
}

void Solver::debugPrintArgcArgv(int argc, char** argv) const {
    for (int i = 0; i < argc; ++i) {
        Logger::get()->log(Logger::everything, argv[i]);
    }
}
