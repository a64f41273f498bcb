#pragma once

#include <functional>
#include <string>
#include <vector>

namespace cosim_host {

/// How small deviations of a car from rest at the end of a communication step follow from those at
/// its begin, row by row: column j is what a deviation of 1 in the j-th state leads to.
using StepMatrix = std::vector<std::vector<double>>;

/// Whether deviations do not grow when the step of `stepSize` seconds is made again and again.
bool settles(StepMatrix matrix, double stepSize);

/// The longest communication step, in whole tenths of a millisecond up to 1 s, that settles; 0 when
/// none does. `matrixOf` makes the matrix of a step (seconds). Answers in seconds.
double longestSettlingStep(const std::function<StepMatrix(double stepSize)>& matrixOf);

/// One line about a communication step of `stepSize` seconds with which a car never settles; empty for
/// one with which it does.
std::string settlingWarning(double stepSize,
                            const std::function<StepMatrix(double stepSize)>& matrixOf);

} // namespace cosim_host
