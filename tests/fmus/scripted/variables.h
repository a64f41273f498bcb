/**
 * @file variables.h
 * @brief The scripted slave's variables, in the order of their value references.
 */
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace real {
enum Reference : std::size_t {
    gain,
    mass,
    u,
    rawInput,
    force,
    x = force + 3,
    y,
    pressure,
    pressureScalar = pressure + 3,
    flow,
    energy,
    doubleMass,
    count
};

inline constexpr std::array<std::string_view, count> names = {
    "gain", "mass", "u",    "rawInput", "F[1]", "F[2]", "F[3]",   "x",
    "y",    "P[1]", "P[2]", "P[3]",     "P",    "Q[1]", "energy", "doubleMass"};
} // namespace real

namespace integer {
enum Reference : std::size_t {
    offset,
    selector,
    steps,
    liveInstances,
    mode,
    currentMode,
    selected,
    count
};

inline constexpr std::array<std::string_view, count> names = {
    "offset", "selector", "steps", "liveInstances", "mode", "currentMode", "selected"};
} // namespace integer

namespace boolean {
enum Reference : std::size_t { enabled, active, isActive, count };

inline constexpr std::array<std::string_view, count> names = {"enabled", "active", "isActive"};
} // namespace boolean

namespace string {
enum Reference : std::size_t { script, label, echo, calls, count };

inline constexpr std::array<std::string_view, count> names = {"script", "label", "echo", "calls"};
} // namespace string
