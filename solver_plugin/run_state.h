#pragma once

#include "fmi_tools.h"

#include <cstdint>

/// How far a run has come. The state hangs on the FMU's handle, so that whoever has the handle can
/// ask. Every function takes a null handle like one without a record.
namespace solver_plugin {

/// The states of a run. Nothing ever sets `terminated`: the end of a run frees the record.
enum class SolverState : std::uint32_t {
    creating = 0,
    created = 1,
    started = 2,
    initialised = 3,
    simulating = 4,
    terminated = 5
};

/// The record attached to the handle as user data.
struct PluginRunState {
    /// A SolverState.
    std::uint32_t state = 0;
    /// The kind of FMU that the user declared. Not owned; to be read only while the start that
    /// recorded it runs.
    const char* fmuKind = nullptr;
};

/// Answer to the question whether an operation may run.
struct Permission {
    bool granted;
    std::int32_t result; ///< 0, or -1 when asking at all was an error.
};

/// Words for a value of SolverState; "Solver not created" for any other value.
const char* stateText(std::uint32_t state);

/// Words for the state of the run of `fmu`; "Solver not created" without a record.
const char* stateText(FmiToolsInstance* fmu);

/// Allocates a record in state `creating` and attaches it.
///
/// @return 0; -1 when memory ran out, with nothing attached
std::int32_t createRunState(FmiToolsInstance* fmu);

/// Frees the record, if there is one.
///
/// @return the result of fmiToolsGetUserData()
std::int32_t freeRunState(FmiToolsInstance* fmu);

/// Changes the state; does nothing without a record.
void setState(FmiToolsInstance* fmu, SolverState state);

/// Remembers the kind of FMU that the user declared; does nothing without a record.
///
/// @param kind a text of the caller's, not copied
/// @return 0
std::int32_t recordKind(FmiToolsInstance* fmu, const char* kind);

/// Granted in state `created`; refused without error in state `started`; an error otherwise.
Permission mayStart(FmiToolsInstance* fmu);

/// Granted in state `started`; refused without error otherwise.
Permission mayInitialise(FmiToolsInstance* fmu);

/// Granted in the states `initialised` and `simulating`; an error otherwise.
Permission maySolve(FmiToolsInstance* fmu);

} // namespace solver_plugin
