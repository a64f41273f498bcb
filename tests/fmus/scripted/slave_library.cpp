#include "tests/fmus/scripted/slave_library.h"

#include "tests/fmus/scripted/actions.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace {

// At namespace scope, so that it lives exactly as long as the binary is loaded.
SlaveLibrary library;

} // namespace

SlaveLibrary::SlaveLibrary() {
    act("load");
}

SlaveLibrary::~SlaveLibrary() {
    unloading_ = true;
    std::ranges::for_each(threads_, &std::thread::join);
    act("unload");
}

void SlaveLibrary::record(const std::string& call) {
    if (const char* path = std::getenv("SCRIPTED_FMU_RECORD")) {
        std::ofstream(path, std::ios::binary | std::ios::app) << call << '\n';
    }
}

Script SlaveLibrary::environmentScript() {
    const char* text = std::getenv("SCRIPTED_FMU_SCRIPT");
    return text != nullptr ? Script(text) : Script();
}

void SlaveLibrary::bury(std::unique_ptr<Slave> instance, const fmi2CallbackFunctions* functions) {
    --liveInstances_;
    buried_.push_back(std::move(instance));
    lastFunctions_ = functions;
}

void SlaveLibrary::goOn(const std::function<void()>& work) {
    threads_.emplace_back([this, work] {
        while (!unloading_) {
            work();
        }
    });
}

void SlaveLibrary::act(const char* call) {
    record(call);
    try {
        carryOut(environmentScript().actionsOf(call, {}), lastFunctions_, "FMU instance");
    } catch (const std::invalid_argument&) {
        // Nobody listens yet; the instantiation reports it.
        return;
    }
}

SlaveLibrary& slaveLibrary() {
    return library;
}
