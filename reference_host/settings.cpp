#include "reference_host/host_state.h"

namespace {

/// The value stored at `index`, or the type's empty value.
template <typename Value>
Value valueAt(const std::map<int, Value>& values, int index) {
    const auto found = values.find(index);
    return found == values.end() ? Value{} : found->second;
}

} // namespace

Parameters::Parameters(State& state) : state_(state) {}

int Parameters::getIntParameter(int index) const {
    return valueAt(state_.integers, index);
}

void Parameters::setParameter(int index, int value) {
    state_.integers[index] = value;
}

std::string Parameters::getStringParameter(int index) const {
    return valueAt(state_.texts, index);
}

Options::Options(State& state) : state_(state) {}

bool Options::getOption(int index) const {
    return valueAt(state_.switches, index);
}

SolutionSettings::SolutionSettings(State& state) : state_(state) {}

Parameters* SolutionSettings::getParameters() const {
    return &state_.parameters.object;
}

Options* SolutionSettings::getOptions() const {
    return &state_.options.object;
}

SolverSettings::SolverSettings(State& state) : state_(state) {}

Parameters* SolverSettings::getSolverSettingParameters() const {
    return &state_.parameters.object;
}

Options* SolverSettings::getSolverSettingOptions() const {
    return &state_.options.object;
}

Solution::Solution(State& state) : state_(state) {}

SolutionSettings* Solution::getSolutionSettings() const {
    return &state_.settings.object;
}

ModelManager::ModelManager(State& state) : state_(state) {}

Solution* ModelManager::getSolution() const {
    return state_.solutionWithheld ? nullptr : &state_.solution.object;
}
