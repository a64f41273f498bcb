#include "programs/cosim_host/settling.h"

#include "programs/support/number_text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace cosim_host {

namespace {

StepMatrix squared(const StepMatrix& matrix) {
    const std::size_t size = matrix.size();
    StepMatrix result(size, std::vector<double>(size));
    for (std::size_t i = 0; i < size; ++i) {
        for (std::size_t j = 0; j < size; ++j) {
            for (std::size_t k = 0; k < size; ++k) {
                result[i][j] += matrix[i][k] * matrix[k][j];
            }
        }
    }
    return result;
}

bool hasGrown(const StepMatrix& matrix) {
    constexpr double mostOfADecay = 1e3; // passing, between states of different units
    return std::any_of(matrix.begin(), matrix.end(), [](const std::vector<double>& row) {
        return std::any_of(row.begin(), row.end(),
                           [](double value) { return !(std::abs(value) <= mostOfADecay); });
    });
}

} // namespace

bool settles(StepMatrix matrix, double stepSize) {
    constexpr double longEnough = 1000.0; // seconds, for what grows to have grown
    double span = stepSize;
    while (span < longEnough) {
        matrix = squared(matrix);
        if (hasGrown(matrix)) {
            return false;
        }
        span *= 2.0;
    }
    return true;
}

double longestSettlingStep(const std::function<StepMatrix(double stepSize)>& matrixOf) {
    constexpr double countPerSecond = 1e4;
    int settling = 0;
    int growing = static_cast<int>(countPerSecond) + 1;
    while (growing - settling > 1) {
        const int middle = (settling + growing) / 2;
        const double stepSize = middle / countPerSecond;
        (settles(matrixOf(stepSize), stepSize) ? settling : growing) = middle;
    }
    return settling / countPerSecond;
}

std::string settlingWarning(double stepSize,
                            const std::function<StepMatrix(double stepSize)>& matrixOf) {
    if (settles(matrixOf(stepSize), stepSize)) {
        return "";
    }
    using program_support::shortNumber;
    const double longest = longestSettlingStep(matrixOf);
    return "with a communication step of " + shortNumber(stepSize) +
           " s a wheel never settles on its tyre: the results show that, not the car; " +
           (longest > 0.0 ? "give --step-size " + shortNumber(longest) + " or less"
                          : "nor does it with any step of 0.0001 s or more: check the vehicle");
}

} // namespace cosim_host
