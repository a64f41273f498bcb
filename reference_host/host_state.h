#pragma once

#include "host/coupled_condition.h"
#include "host/model_manager.h"
#include "host/model_setup.h"
#include "host/object.h"
#include "host/options.h"
#include "host/output_result.h"
#include "host/parameters.h"
#include "host/physical_quantity.h"
#include "host/result.h"
#include "host/simulation_data_model.h"
#include "host/solution.h"
#include "host/solution_settings.h"
#include "host/solver_settings.h"
#include "reference_host/tuple_table.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// What this host keeps behind the objects of host/. The objects themselves are only views of it.

namespace reference_host {

/// A host object together with the state that it stands on.
template <typename T>
struct Owned {
    template <typename... Values>
    explicit Owned(Values&&... values) : state(std::forward<Values>(values)...),
                                         object(state) {}

    ~Owned() = default;
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    Owned(Owned&&) = delete;
    Owned& operator=(Owned&&) = delete;

    typename T::State state;
    T object;
};

} // namespace reference_host

struct Object::State {
    std::string name;
};

struct PhysicalQuantity::State {
    State(const std::string& name, int components) : object{name}, size(components) {}

    Object::State object;
    int size;
};

struct Result::State {
    State(const std::string& quantityName, int components) : quantity(quantityName, components) {}

    reference_host::TupleTable values;
    reference_host::Owned<PhysicalQuantity> quantity;
};

struct CoupledCondition::State {
    State(const std::string& name, const std::string& quantityName, int components)
        : object{name},
          result(quantityName, components) {}

    Object::State object;
    reference_host::Owned<Result> result;
};

struct OutputResult::State {
    State(const std::string& name, const std::string& quantityName, int components)
        : object{name},
          result(quantityName, components) {}

    Object::State object;
    reference_host::Owned<Result> result;
};

struct ModelSetup::State {
    // Each by itself, so that adding one leaves the others where they are.
    std::vector<std::unique_ptr<reference_host::Owned<CoupledCondition>>> coupledConditions;
    std::vector<std::unique_ptr<reference_host::Owned<OutputResult>>> outputResults;
};

struct Parameters::State {
    std::map<int, int> integers;
    std::map<int, std::string> texts;
};

struct Options::State {
    std::map<int, bool> switches;
};

struct SolutionSettings::State {
    reference_host::Owned<Parameters> parameters;
    reference_host::Owned<Options> options;
};

struct SolverSettings::State {
    reference_host::Owned<Parameters> parameters;
    reference_host::Owned<Options> options;
};

struct Solution::State {
    reference_host::Owned<SolutionSettings> settings;
};

struct ModelManager::State {
    reference_host::Owned<Solution> solution;
    bool solutionWithheld = false;
    reference_host::Owned<SolverSettings> solverSettings;
    SimulationDataModel model;
    reference_host::Owned<ModelSetup> modelSetup;
};
