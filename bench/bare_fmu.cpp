#include "bench/bare_fmu.h"

#include "platform/files.h"

#include <cstdlib>
#include <stdexcept>

namespace bench {

template <typename Function>
Function* BareFmu::function(const char* name) {
    return reinterpret_cast<Function*>(library_.symbol(name));
}

BareFmu::BareFmu(const Workload& workload) {
    const auto binary = workload.directory / "binaries" / platform::SharedLibrary::fmiPlatform() /
                        (workload.identifier + platform::SharedLibrary::suffix());
    if (!library_.open(platform::narrowPath(binary))) {
        throw std::runtime_error(library_.error());
    }
    setReal_ = function<decltype(fmi2SetReal)>("fmi2SetReal");
    getReal_ = function<decltype(fmi2GetReal)>("fmi2GetReal");
    doStep_ = function<decltype(fmi2DoStep)>("fmi2DoStep");
    callbacks_.allocateMemory = std::calloc;
    callbacks_.freeMemory = std::free;
    slave_ = function<decltype(fmi2Instantiate)>("fmi2Instantiate")(
        "bare", fmi2CoSimulation, workload.guid.c_str(), "", &callbacks_, fmi2False, fmi2False);
    if (slave_ == nullptr) {
        throw std::runtime_error("Cannot instantiate " + workload.identifier);
    }
    function<decltype(fmi2SetupExperiment)>("fmi2SetupExperiment")(slave_, fmi2False, 0.0, 0.0,
                                                                   fmi2False, 0.0);
    function<decltype(fmi2EnterInitializationMode)>("fmi2EnterInitializationMode")(slave_);
    function<decltype(fmi2ExitInitializationMode)>("fmi2ExitInitializationMode")(slave_);
}

BareFmu::~BareFmu() {
    function<decltype(fmi2Terminate)>("fmi2Terminate")(slave_);
    function<decltype(fmi2FreeInstance)>("fmi2FreeInstance")(slave_);
}

} // namespace bench
