#include "tests/fmus/scripted/actions.h"

#include "tests/fmus/scripted/slave_library.h"

#include <algorithm>
#include <array>
#include <bit>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <thread>

namespace {

const char* nullIfSaid(const std::string& text) {
    return text == "null" ? nullptr : text.c_str();
}

void sendMessage(const Action& action, const fmi2CallbackFunctions& functions,
                 const std::string& instanceName) {
    const auto status = static_cast<fmi2Status>(action.status);
    const char* category = nullIfSaid(action.category);
    const char* name = action.verb == "logUnnamed" ? nullptr : instanceName.c_str();
    if (action.verb == "logf") {
        functions.logger(functions.componentEnvironment, name, status, category,
                         nullIfSaid(action.text), "text", 42, 2.5);
    } else if (action.verb == "logAtOnce") {
        const auto send = [&] {
            for (int number = std::stoi(action.text); number > 0; --number) {
                functions.logger(functions.componentEnvironment, name, status, category,
                                 "message %d of a thread", number);
            }
        };
        std::array<std::thread, 4> threads{std::thread(send), std::thread(send), std::thread(send),
                                           std::thread(send)};
        std::ranges::for_each(threads, &std::thread::join);
    } else if (action.verb == "logOn") {
        slaveLibrary().goOn(
            [=, environment = functions.componentEnvironment, logger = functions.logger] {
                logger(environment, instanceName.c_str(), status, action.category.c_str(),
                       action.text.c_str());
            });
    } else if (action.verb == "logLong") {
        const std::string letters(std::stoul(action.text), 'x');
        functions.logger(functions.componentEnvironment, name, status, category, letters.c_str());
    } else {
        functions.logger(functions.componentEnvironment, name, status, category,
                         nullIfSaid(action.text));
    }
}

void callTool(const Action& action, const fmi2CallbackFunctions* functions,
              const std::string& instanceName) {
    if (functions == nullptr) {
        return;
    }
    if (action.verb.starts_with("log") && functions->logger != nullptr) {
        sendMessage(action, *functions, instanceName);
    } else if (action.verb == "stepFinished" && functions->stepFinished != nullptr) {
        functions->stepFinished(functions->componentEnvironment,
                                static_cast<fmi2Status>(action.status));
    }
}

/** Its type information lives in this binary, and its destructor does, too. */
struct ScriptedException {
    ScriptedException() = default;
    ScriptedException(const ScriptedException&) = default;
    ScriptedException& operator=(const ScriptedException&) = default;

    virtual ~ScriptedException() { text.clear(); }

    std::string text = "An exception that nobody but its binary knows";
};

void affectProcess(const Action& action) {
    if (action.verb == "sleep") {
        std::this_thread::sleep_for(std::chrono::duration<double>(std::stod(action.text)));
    } else if (action.verb == "throw") {
        throw ScriptedException();
    } else if (action.verb == "abort") {
        std::abort();
    } else if (action.verb == "exitOrderly") {
        std::exit(std::stoi(action.text));
    } else if (action.verb == "crash") {
        // No page is ever there, and no sanitizer takes it for a null pointer and reports in its own way.
        auto* volatile nowhere = std::bit_cast<volatile int*>(std::uintptr_t{16});
        *nowhere = 0;
    } else if (action.verb == "exit") {
        std::_Exit(std::stoi(action.text));
    }
}

} // namespace

Answer carryOut(const std::vector<Action>& actions, const fmi2CallbackFunctions* functions,
                const std::string& instanceName) {
    Answer answer;
    for (const Action& action : actions) {
        if (action.verb.empty()) {
            answer.status = static_cast<fmi2Status>(action.status);
        } else if (action.verb == "value") {
            answer.value = action.text;
        } else if (action.verb == "refuse") {
            answer.refused = true;
        } else {
            callTool(action, functions, instanceName);
            affectProcess(action);
        }
    }
    return answer;
}
