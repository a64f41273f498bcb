/**
 * @file internal_steps.h
 * @brief How a model with an integration of its own divides a communication step.
 */
#pragma once

#include <cmath>

/** The longest communication step that a model takes [s]; a longer one would keep the simulation
 *  tool waiting for minutes. */
inline constexpr double longestCommunicationStep = 1000.0;

/** How many equal steps of at most @p longest seconds make up @p step seconds. A ratio that is
 * whole up to rounding counts as whole; the number is bounded so that no @p longest overflows it,
 * one that is no number included.
 */
inline int internalSteps(double step, double longest) {
    return static_cast<int>(std::fmin(std::fmax(1.0, std::ceil(step / longest - 1e-6)), 1e9));
}
