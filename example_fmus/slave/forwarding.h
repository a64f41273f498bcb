/**
 * @file forwarding.h
 * @brief The border between the C functions of FMI and the slave behind them.
 */
#pragma once

#include "example_fmus/slave/slave.h"

#include <exception>

/** Calls @p operation with the slave of @p component; an exception becomes a message and fmi2Error,
 *  and so does a component that is null. */
template <typename Operation>
fmi2Status forward(fmi2Component component, Operation operation) noexcept {
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
