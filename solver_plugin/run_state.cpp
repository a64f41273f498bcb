#include "solver_plugin/run_state.h"

#include <array>
#include <new>

namespace solver_plugin {

namespace {

constexpr const char* noRecordText = "Solver not created";

PluginRunState* recordOf(FmiToolsInstance* fmu) {
    void* record = nullptr;
    fmiToolsGetUserData(fmu, &record);
    return static_cast<PluginRunState*>(record);
}

bool isIn(FmiToolsInstance* fmu, SolverState state) {
    const auto* record = recordOf(fmu);
    return record != nullptr && record->state == static_cast<std::uint32_t>(state);
}

} // namespace

const char* stateText(std::uint32_t state) {
    constexpr std::array texts{"Solver being created...", "Solver created",    "Solver started",
                               "Solver initialised",      "Solver simulating", "Solver terminated"};
    return state < texts.size() ? texts[state] : noRecordText;
}

const char* stateText(FmiToolsInstance* fmu) {
    const auto* record = recordOf(fmu);
    return record == nullptr ? noRecordText : stateText(record->state);
}

std::int32_t createRunState(FmiToolsInstance* fmu) {
    auto* record = new (std::nothrow) PluginRunState;
    return record == nullptr ? -1 : fmiToolsAttachUserData(fmu, record);
}

std::int32_t freeRunState(FmiToolsInstance* fmu) {
    void* record = nullptr;
    const std::int32_t result = fmiToolsGetUserData(fmu, &record);
    if (result == 0) {
        delete static_cast<PluginRunState*>(record);
        fmiToolsAttachUserData(fmu, nullptr);
    }
    return result;
}

void setState(FmiToolsInstance* fmu, SolverState state) {
    if (auto* record = recordOf(fmu)) {
        record->state = static_cast<std::uint32_t>(state);
    }
}

std::int32_t recordKind(FmiToolsInstance* fmu, const char* kind) {
    if (auto* record = recordOf(fmu)) {
        record->fmuKind = kind;
    }
    return 0;
}

Permission mayStart(FmiToolsInstance* fmu) {
    if (isIn(fmu, SolverState::started)) {
        return {false, 0};
    }
    const bool granted = isIn(fmu, SolverState::created);
    return {granted, granted ? 0 : -1};
}

Permission mayInitialise(FmiToolsInstance* fmu) {
    return {isIn(fmu, SolverState::started), 0};
}

Permission maySolve(FmiToolsInstance* fmu) {
    const bool granted = isIn(fmu, SolverState::initialised) || isIn(fmu, SolverState::simulating);
    return {granted, granted ? 0 : -1};
}

} // namespace solver_plugin
