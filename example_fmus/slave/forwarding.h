/**
 * @file forwarding.h
 * @brief The border between the C functions of FMI and the slave behind them.
 */
#pragma once

#include "example_fmus/slave/slave.h"

#include <exception>
#include <string>

/** Calls @p operation with the slave of @p component; an exception of the standard library becomes a
 *  message and fmi2Error, and so does a component that is null. Others go on to the tool, as they
 *  do from an FMU that has no such border. */
template <typename Operation>
fmi2Status forward(fmi2Component component, Operation operation) {
    auto* slave = static_cast<Slave*>(component);
    if (slave == nullptr) {
        return fmi2Error;
    }
    try {
        return operation(*slave);
    } catch (const std::exception& error) {
        slave->log(fmi2Error, error.what());
        return fmi2Error;
    }
}

/** Answers for @p function, whose @p capability no slave of ours announces. */
inline fmi2Status notOffered(fmi2Component component, const char* function,
                             const char* capability) {
    return forward(component, [=](Slave& slave) {
        slave.log(fmi2Error, std::string(function) +
                                 " is not offered: modelDescription.xml does not announce " +
                                 capability + ".");
        return fmi2Error;
    });
}
