/**
 * @file parameter_rules.h
 * @brief Which values the Real parameters of a physical model may have.
 */
#pragma once

#include "example_fmus/slave/slave.h"

#include <charconv>
#include <cmath>
#include <span>
#include <string>

/** The rule for the parameter that @p Parameters keeps in @p member. */
template <typename Parameters>
struct ParameterRule {
    const char* name;
    const char* unit;
    double Parameters::*member;
    bool mayBeZero = false;
};

/** The number in as few digits as tell it from its neighbours. */
inline std::string shortText(double value) {
    char buffer[40];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr};
}

/** Tells the simulation tool about each parameter that makes no sense.
 *  @return fmi2OK, or fmi2Error when there was one */
template <typename Parameters>
fmi2Status checkParameters(const Slave& slave, const Parameters& parameters,
                           std::span<const ParameterRule<Parameters>> rules) {
    fmi2Status status = fmi2OK;
    for (const auto& rule : rules) {
        const double value = parameters.*rule.member;
        const bool inRange = rule.mayBeZero ? value >= 0.0 : value > 0.0;
        if (!std::isfinite(value) || !inRange) {
            slave.log(fmi2Error, std::string("Parameter '") + rule.name + "' is " +
                                     shortText(value) + " " + rule.unit + "; it must be " +
                                     (rule.mayBeZero ? "at least 0." : "greater than 0."));
            status = fmi2Error;
        }
    }
    return status;
}
