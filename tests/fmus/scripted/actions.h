/**
 * @file actions.h
 * @brief Carries out what a script says for one call.
 */
#pragma once

#include "example_fmus/fmi2_functions.h"
#include "tests/fmus/scripted/script.h"

#include <optional>
#include <string>
#include <vector>

/** What the script decided about a call. */
struct Answer {
    std::optional<fmi2Status> status;
    std::optional<std::string> value;
    bool refused = false;

    /** Whether the call still does what it is for. */
    bool allowsWork() const { return !status || *status == fmi2OK || *status == fmi2Warning; }
};

/**
 * Carries out @p actions in their order.
 *
 * @param functions the tool's callbacks; null while there is no instance, which skips messages
 * @param instanceName sent with the messages
 */
Answer carryOut(const std::vector<Action>& actions, const fmi2CallbackFunctions* functions,
                const std::string& instanceName);
