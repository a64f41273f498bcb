#include "tests/fmus/scripted/slave_library.h"

#include "tests/fmus/scripted/actions.h"

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

void SlaveLibrary::bury(std::unique_ptr<Slave> instance) {
    --liveInstances_;
    buried_.push_back(std::move(instance));
}

void SlaveLibrary::act(const char* call) {
    record(call);
    try {
        carryOut(environmentScript().actionsOf(call, {}), nullptr, "");
    } catch (const std::invalid_argument&) {
        // Nobody listens yet; the instantiation reports it.
        return;
    }
}

SlaveLibrary& slaveLibrary() {
    return library;
}
