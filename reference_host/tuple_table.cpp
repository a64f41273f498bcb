#include "reference_host/tuple_table.h"

#include <stdexcept>

namespace reference_host {

namespace {

std::size_t checkedIndex(int index) {
    if (index < 0) {
        throw std::out_of_range("negative index into a tuple array");
    }
    return static_cast<std::size_t>(index);
}

} // namespace

double TupleTable::getValue(int tuple, int component) const {
    const std::size_t row = checkedIndex(tuple);
    const std::size_t column = checkedIndex(component);
    if (row >= tuples_.size() || column >= tuples_[row].size()) {
        return 0.0;
    }
    return tuples_[row][column];
}

void TupleTable::setValue(int tuple, int component, double value) {
    const std::size_t row = checkedIndex(tuple);
    const std::size_t column = checkedIndex(component);
    if (row >= tuples_.size() || column >= tuples_[row].size()) {
        makeRoom(row, column);
    }
    tuples_[row][column] = value;
}

void TupleTable::makeRoom(std::size_t row, std::size_t column) {
    if (row >= tuples_.size()) {
        tuples_.resize(row + 1);
    }
    if (column >= tuples_[row].size()) {
        tuples_[row].resize(column + 1);
    }
}

} // namespace reference_host
