#include "bench/step_loop.h"

#include <array>
#include <stdexcept>
#include <string>

namespace bench {

namespace {

struct LoopMaker {
    std::string_view name;
    decltype(&makeRuntimeLoop) make;
};

constexpr std::array makers{
    LoopMaker{loops::runtime, makeRuntimeLoop}, LoopMaker{loops::plugin, makePluginLoop},
    LoopMaker{loops::limit, makeLimitLoop}, LoopMaker{loops::plain, makePlainLoop}};

} // namespace

std::unique_ptr<StepLoop> makeStepLoop(std::string_view name, const Workload& workload,
                                       const std::filesystem::path& directory) {
    for (const LoopMaker& maker : makers) {
        if (maker.name == name) {
            return maker.make(workload, directory);
        }
    }
    throw std::runtime_error("There is no loop '" + std::string(name) +
                             "': choose runtime, plugin, limit or plain");
}

void requireSuccess(int result) {
    if (result < 0) {
        throw std::runtime_error("A call failed with " + std::to_string(result));
    }
}

} // namespace bench
