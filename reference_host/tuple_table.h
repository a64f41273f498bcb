#pragma once

#include "host/tuple_array.h"

#include <cstddef>
#include <vector>

namespace reference_host {

/// A tuple array that grows to fit what is written; what was never written reads as 0.
class TupleTable : public TupleArray<double> {
  public:
    /// @throws std::out_of_range when an index is negative
    double getValue(int tuple, int component) const override;

    /// @throws std::out_of_range when an index is negative
    void setValue(int tuple, int component, double value) override;

  private:
    void makeRoom(std::size_t row, std::size_t column);

    std::vector<std::vector<double>> tuples_;
};

} // namespace reference_host
