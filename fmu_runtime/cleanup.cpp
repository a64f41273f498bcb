#include "fmu_runtime/instance.h"
#include "platform/command.h"

#include <memory>
#include <utility>

using namespace fmu_runtime;

namespace {

constexpr std::size_t longestCommand = 259;

/// Runs the script that removes what a run left behind. The script is told ".", the directory it is
/// run in.
void runCleanupScript(FmiToolsInstance* instance) {
    const std::string argument = ".";
    const std::string script =
        instance->scriptDirectory + "fmuclean" + std::string(platform::scriptSuffix());
    const std::string command = script + ' ' + argument;
    if (command.size() > longestCommand) {
        logRuntime(instance, levels::error,
                   LogMessage("Cleanup script path is too long: ").add(command));
        return;
    }
    logRuntime(instance, levels::debug, LogMessage("Calling cleanup script as: ").add(command));
    platform::runScript(script, argument);
}

/// The order matters to a reader of the output: the log file ends with "Closing plugin" and what
/// the FMU says while it is ended; the lines of what follows appear on standard output.
void cleanUp(std::unique_ptr<FmiToolsInstance> instance) {
    logRuntime(instance.get(), levels::ok, "Closing plugin");
    instance->slave.release();
    endLog(std::move(instance->log), instance->slave.isCodeLeft());
    instance->results.output.close();
    logRuntime(instance.get(), levels::ok, "Closing library");
    runCleanupScript(instance.get());
    instance.reset();
    logRuntime(nullptr, levels::ok, "Closed plugin");
}

} // namespace

std::int32_t fmiToolsCleanup(FmiToolsInstance* instance) {
    if (instance == nullptr) {
        return success;
    }
    return guarded<std::int32_t>(success, [&] {
        cleanUp(std::unique_ptr<FmiToolsInstance>(instance));
        return success;
    });
}
