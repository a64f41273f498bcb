// A slave that does in every call what a script says (see script.h), and otherwise a little that is
// easy to follow: x is the integral of gain * u over time, each output repeats its input, and the
// String output `calls` lists the last 1000 calls, one a line.
#include "tests/fmus/scripted/actions.h"
#include "tests/fmus/scripted/call_text.h"
#include "tests/fmus/scripted/slave_library.h"
#include "tests/fmus/scripted/variables.h"

#include <algorithm>
#include <deque>
#include <stdexcept>
#include <utility>

namespace {

constexpr std::size_t keptCalls = 1000;

class ScriptedSlave : public Slave {
  public:
    ScriptedSlave(const Instantiation& instantiation, Script script);

    bool refuses(const Instantiation& instantiation);

    void freeInstance() override;
    fmi2Status setDebugLogging(bool loggingOn) override;
    fmi2Status setupExperiment(const Experiment& experiment) override;

    fmi2Status enterInitializationMode() override { return plain("enterInitializationMode"); }

    fmi2Status exitInitializationMode() override { return plain("exitInitializationMode"); }

    fmi2Status terminate() override { return plain("terminate"); }

    fmi2Status reset() override;
    fmi2Status getReal(References references, fmi2Real* values) override;
    fmi2Status getInteger(References references, fmi2Integer* values) override;
    fmi2Status getBoolean(References references, fmi2Boolean* values) override;
    fmi2Status getString(References references, fmi2String* values) override;
    fmi2Status setReal(References references, const fmi2Real* values) override;
    fmi2Status setInteger(References references, const fmi2Integer* values) override;
    fmi2Status setBoolean(References references, const fmi2Boolean* values) override;
    fmi2Status setString(References references, const fmi2String* values) override;
    fmi2Status doStep(const CommunicationStep& step) override;

    fmi2Status cancelStep() override { return plain("cancelStep"); }

    fmi2Status getStatus(fmi2StatusKind kind, fmi2Status& value) override;
    fmi2Status getRealStatus(fmi2StatusKind kind, fmi2Real& value) override;
    fmi2Status getIntegerStatus(fmi2StatusKind kind, fmi2Integer& value) override;
    fmi2Status getBooleanStatus(fmi2StatusKind kind, fmi2Boolean& value) override;
    fmi2Status getStringStatus(fmi2StatusKind kind, fmi2String& value) override;

  private:
    Answer begin(const char* call, const std::string& arguments, const Names& variables);
    void record(std::string call);
    fmi2Status plain(const char* call, const std::string& arguments = "");

    template <typename Value, typename Get>
    fmi2Status getAs(const char* call, const Names& variables, Value* values, Get get);
    template <typename Set>
    fmi2Status setAs(const char* call, const Names& variables, const std::string& arguments,
                     Set set);
    template <typename Value>
    fmi2Status statusAs(const char* call, fmi2StatusKind kind, Value& value);

    void endLife();
    void useStartValues();
    void updateOutputs();
    void updateCalls();

    Script script_;
    std::deque<std::string> calls_;
    std::string scriptedText_;
    bool freed_ = false;
};

ScriptedSlave::ScriptedSlave(const Instantiation& instantiation, Script script)
    : Slave(instantiation, {real::count, integer::count, boolean::count, string::count}),
      script_(std::move(script)) {
    useStartValues();
}

bool ScriptedSlave::refuses(const Instantiation& instantiation) {
    return begin("instantiate",
                 instantiation.instanceName + " " + instantiation.resourceLocation +
                     (instantiation.visible ? " visible" : "") +
                     (instantiation.loggingOn ? " logging" : ""),
                 {})
        .refused;
}

Answer ScriptedSlave::begin(const char* call, const std::string& arguments,
                            const Names& variables) {
    record(arguments.empty() ? call : std::string(call) + " " + arguments);
    return carryOut(script_.actionsOf(call, variables), functions(), instanceName());
}

void ScriptedSlave::record(std::string call) {
    SlaveLibrary::record(freed_ ? "after freeInstance: " + call : call);
    calls_.push_back(std::move(call));
    if (calls_.size() > keptCalls) {
        calls_.pop_front();
    }
}

fmi2Status ScriptedSlave::plain(const char* call, const std::string& arguments) {
    return begin(call, arguments, {}).status.value_or(fmi2OK);
}

template <typename Value, typename Get>
fmi2Status ScriptedSlave::getAs(const char* call, const Names& variables, Value* values, Get get) {
    const Answer answer = begin(call, joined(variables), variables);
    if (!answer.allowsWork()) {
        return *answer.status;
    }
    updateOutputs();
    const fmi2Status status = get();
    if (answer.value && status == fmi2OK) {
        scriptedText_ = *answer.value;
        std::fill_n(values, variables.size(), valueOf<Value>(scriptedText_));
    }
    return answer.status.value_or(status);
}

template <typename Set>
fmi2Status ScriptedSlave::setAs(const char* call, const Names& variables,
                                const std::string& arguments, Set set) {
    const Answer answer = begin(call, arguments, variables);
    if (!answer.allowsWork()) {
        return *answer.status;
    }
    const fmi2Status status = set();
    return answer.status.value_or(status);
}

template <typename Value>
fmi2Status ScriptedSlave::statusAs(const char* call, fmi2StatusKind kind, Value& value) {
    const Answer answer = begin(call, std::to_string(kind), {});
    if (answer.value) {
        scriptedText_ = *answer.value;
        value = valueOf<Value>(scriptedText_);
    }
    return answer.status.value_or(answer.value ? fmi2OK : fmi2Discard);
}

void ScriptedSlave::endLife() {
    if (!std::exchange(freed_, true)) {
        slaveLibrary().bury(std::unique_ptr<Slave>(this), functions());
    }
}

void ScriptedSlave::freeInstance() {
    try {
        begin("freeInstance", "", {});
    } catch (...) {
        endLife();
        throw;
    }
    endLife();
}

fmi2Status ScriptedSlave::setDebugLogging(bool loggingOn) {
    return plain("setDebugLogging", loggingOn ? "true" : "false");
}

fmi2Status ScriptedSlave::setupExperiment(const Experiment& experiment) {
    const auto text = [](std::optional<double> value) { return value ? textOf(*value) : "none"; };
    return plain("setupExperiment", text(experiment.tolerance) + " " +
                                        textOf(experiment.startTime) + " " +
                                        text(experiment.stopTime));
}

fmi2Status ScriptedSlave::reset() {
    const fmi2Status status = plain("reset");
    useStartValues();
    return status;
}

fmi2Status ScriptedSlave::getReal(References references, fmi2Real* values) {
    return getAs("getReal", namesOf(references, real::names), values,
                 [&] { return Slave::getReal(references, values); });
}

fmi2Status ScriptedSlave::getInteger(References references, fmi2Integer* values) {
    return getAs("getInteger", namesOf(references, integer::names), values,
                 [&] { return Slave::getInteger(references, values); });
}

fmi2Status ScriptedSlave::getBoolean(References references, fmi2Boolean* values) {
    return getAs("getBoolean", namesOf(references, boolean::names), values,
                 [&] { return Slave::getBoolean(references, values); });
}

fmi2Status ScriptedSlave::getString(References references, fmi2String* values) {
    const Names variables = namesOf(references, string::names);
    return getAs("getString", variables, values, [&] {
        updateCalls();
        return Slave::getString(references, values);
    });
}

fmi2Status ScriptedSlave::setReal(References references, const fmi2Real* values) {
    const Names variables = namesOf(references, real::names);
    return setAs("setReal", variables, assignments(variables, values),
                 [&] { return Slave::setReal(references, values); });
}

fmi2Status ScriptedSlave::setInteger(References references, const fmi2Integer* values) {
    const Names variables = namesOf(references, integer::names);
    return setAs("setInteger", variables, assignments(variables, values),
                 [&] { return Slave::setInteger(references, values); });
}

fmi2Status ScriptedSlave::setBoolean(References references, const fmi2Boolean* values) {
    const Names variables = namesOf(references, boolean::names);
    return setAs("setBoolean", variables, assignments(variables, values),
                 [&] { return Slave::setBoolean(references, values); });
}

fmi2Status ScriptedSlave::setString(References references, const fmi2String* values) {
    const Names variables = namesOf(references, string::names);
    return setAs("setString", variables, assignments(variables, values), [&] {
        const fmi2Status status = Slave::setString(references, values);
        if (std::find(references.begin(), references.end(), string::script) != references.end()) {
            script_ = Script(strings[string::script]);
        }
        return status;
    });
}

fmi2Status ScriptedSlave::doStep(const CommunicationStep& step) {
    const Answer answer =
        begin("doStep",
              textOf(step.time) + " " + textOf(step.size) + (step.isFinal ? "" : " not final"), {});
    if (answer.allowsWork()) {
        reals[real::x] += reals[real::gain] * reals[real::u] * step.size;
        ++integers[integer::steps];
    }
    return answer.status.value_or(fmi2OK);
}

fmi2Status ScriptedSlave::getStatus(fmi2StatusKind kind, fmi2Status& value) {
    int number = fmi2OK;
    const fmi2Status status = statusAs("getStatus", kind, number);
    value = static_cast<fmi2Status>(number);
    return status;
}

fmi2Status ScriptedSlave::getRealStatus(fmi2StatusKind kind, fmi2Real& value) {
    return statusAs("getRealStatus", kind, value);
}

fmi2Status ScriptedSlave::getIntegerStatus(fmi2StatusKind kind, fmi2Integer& value) {
    return statusAs("getIntegerStatus", kind, value);
}

fmi2Status ScriptedSlave::getBooleanStatus(fmi2StatusKind kind, fmi2Boolean& value) {
    return statusAs("getBooleanStatus", kind, value);
}

fmi2Status ScriptedSlave::getStringStatus(fmi2StatusKind kind, fmi2String& value) {
    return statusAs("getStringStatus", kind, value);
}

void ScriptedSlave::useStartValues() {
    reals = VariableStore<double>(real::count);
    integers = VariableStore<int>(integer::count);
    booleans = VariableStore<int>(boolean::count);
    reals[real::gain] = 1.0;
    reals[real::mass] = 2.0;
    integers[integer::offset] = 3;
    integers[integer::mode] = 1;
    booleans[boolean::enabled] = fmi2True;
    strings[string::label] = "unset";
}

void ScriptedSlave::updateOutputs() {
    reals[real::y] = reals[real::rawInput];
    for (std::size_t i = 0; i < 3; ++i) {
        reals[real::pressure + i] = reals[real::force + i];
    }
    reals[real::pressureScalar] = reals[real::force];
    reals[real::flow] = reals[real::gain] * reals[real::u];
    reals[real::energy] = 0.5 * reals[real::mass] * reals[real::u] * reals[real::u];
    reals[real::doubleMass] = 2.0 * reals[real::mass];
    integers[integer::selected] = integers[integer::selector] + integers[integer::offset];
    integers[integer::currentMode] = integers[integer::mode];
    integers[integer::liveInstances] = slaveLibrary().liveInstances();
    booleans[boolean::isActive] = booleans[boolean::active];
    strings[string::echo] = strings[string::label];
}

void ScriptedSlave::updateCalls() {
    std::string& text = strings[string::calls];
    text.clear();
    for (const std::string& call : calls_) {
        text += call + "\n";
    }
}

} // namespace

std::unique_ptr<Slave> makeSlave(const Instantiation& instantiation) {
    try {
        auto slave =
            std::make_unique<ScriptedSlave>(instantiation, SlaveLibrary::environmentScript());
        const bool refused = slave->refuses(instantiation) || !guidMatches(instantiation, FMU_GUID);
        if (refused) {
            return nullptr;
        }
        slaveLibrary().countInstance();
        return slave;
    } catch (const std::invalid_argument& error) {
        logInstantiationError(instantiation, error.what());
        return nullptr;
    }
}
