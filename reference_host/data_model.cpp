#include "reference_host/host_state.h"

Object::Object(State& state) : state_(state) {}

std::string Object::getName() const {
    return state_.name;
}

PhysicalQuantity::PhysicalQuantity(State& state) : Object(state.object), state_(state) {}

int PhysicalQuantity::getSize() const {
    return state_.size;
}

Result::Result(State& state) : state_(state) {}

TupleArray<double>* Result::getValues() const {
    return &state_.values;
}

PhysicalQuantity* Result::getPhysicalQuantity() const {
    return &state_.quantity.object;
}

CoupledCondition::CoupledCondition(State& state) : Object(state.object), state_(state) {}

Result* CoupledCondition::getResult() const {
    return &state_.result.object;
}

OutputResult::OutputResult(State& state) : Object(state.object), state_(state) {}

Result* OutputResult::getResult() const {
    return &state_.result.object;
}

ModelSetup::ModelSetup(State& state) : state_(state) {}

std::size_t ModelSetup::getNumberOfCoupledConditions() const {
    return state_.coupledConditions.size();
}

CoupledCondition* ModelSetup::getCoupledCondition(std::size_t index) const {
    return &state_.coupledConditions.at(index)->object;
}

std::size_t ModelSetup::getNumberOfOutputResults() const {
    return state_.outputResults.size();
}

OutputResult* ModelSetup::getOutputResult(std::size_t index) const {
    return &state_.outputResults.at(index)->object;
}
