#pragma once

// Read and written through the table of virtual operations alone, like Solver; needs no header.

/// A table of tuples, each of some components of type `T`. Tuple 0 is the current value.
///
/// The order of the two operations is the order of the table through which they are called and must
/// not change. The host deletes its tables as what they are, never through this interface.
template <typename T>
class TupleArray {
  public:
    /// The value of a component (counted from 0) of a tuple (counted from 0).
    virtual T getValue(int tuple, int component) const = 0;

    /// Stores the value of a component (counted from 0) of a tuple (counted from 0).
    virtual void setValue(int tuple, int component, T value) = 0;
};
