// The states of whole slaves, which the runtime does not use: through the slaves' own functions.
#include "example_fmus/fmi2_functions.h"
#include "platform/shared_library.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdarg>
#include <string>
#include <vector>

namespace {

std::string lastMessage;

void keepMessage(fmi2ComponentEnvironment, fmi2String, fmi2Status, fmi2String, fmi2String format,
                 ...) {
    va_list arguments;
    va_start(arguments, format);
    lastMessage = va_arg(arguments, fmi2String); // the format is "%s"
    va_end(arguments);
}

const fmi2CallbackFunctions callbacks = {keepMessage, nullptr, nullptr, nullptr, nullptr};

struct SlaveFile {
    const char* binary;
    const char* guid;
    fmi2ValueReference input;     // a velocity [m/s] that a step depends on
    fmi2ValueReference output;    // a force [N] that it leads to
    fmi2ValueReference parameter; // a stiffness
};

constexpr SlaveFile tyre = {TYRE_BINARY, TYRE_GUID, 7, 19, 34};
constexpr SlaveFile shockAbsorber = {SHOCK_ABSORBER_BINARY, SHOCK_ABSORBER_GUID, 1, 2, 7};
constexpr SlaveFile scripted = {SCRIPTED_BINARY, SCRIPTED_GUID, 2, 7, 0};

/// An instance of a slave in a binary of its own.
class LoadedSlave {
  public:
    explicit LoadedSlave(const SlaveFile& file) : file_(file) {
        EXPECT_TRUE(library_.open(file.binary)) << library_.error();
        component_ = call<decltype(fmi2Instantiate)>("fmi2Instantiate")(
            "slave", fmi2CoSimulation, file.guid, "", &callbacks, fmi2False, fmi2False);
        EXPECT_NE(component_, nullptr) << lastMessage;
    }

    ~LoadedSlave() { call<decltype(fmi2FreeInstance)>("fmi2FreeInstance")(component_); }

    LoadedSlave(const LoadedSlave&) = delete;
    LoadedSlave& operator=(const LoadedSlave&) = delete;
    LoadedSlave(LoadedSlave&&) = delete;
    LoadedSlave& operator=(LoadedSlave&&) = delete;

    template <typename Function>
    Function* call(const char* name) {
        return reinterpret_cast<Function*>(library_.symbol(name));
    }

    void set(fmi2ValueReference reference, double value) {
        EXPECT_EQ(call<decltype(fmi2SetReal)>("fmi2SetReal")(component_, &reference, 1, &value),
                  fmi2OK);
    }

    double output() {
        double value = 0.0;
        EXPECT_EQ(call<decltype(fmi2GetReal)>("fmi2GetReal")(component_, &file_.output, 1, &value),
                  fmi2OK);
        return value;
    }

    void initialise() {
        set(file_.parameter, 70000.0);
        call<decltype(fmi2EnterInitializationMode)>("fmi2EnterInitializationMode")(component_);
        call<decltype(fmi2ExitInitializationMode)>("fmi2ExitInitializationMode")(component_);
    }

    /// The output after each of the steps from `first` to `last`.
    std::vector<double> run(int first, int last) {
        std::vector<double> outputs;
        for (int n = first; n <= last; ++n) {
            set(file_.input, 0.3 * std::sin(0.4 * n));
            EXPECT_EQ(
                call<decltype(fmi2DoStep)>("fmi2DoStep")(component_, n * 1e-3, 1e-3, fmi2False),
                fmi2OK);
            outputs.push_back(output());
        }
        return outputs;
    }

    fmi2Status save(fmi2FMUstate& state) {
        return call<decltype(fmi2GetFMUstate)>("fmi2GetFMUstate")(component_, &state);
    }

    fmi2Status restore(fmi2FMUstate state) {
        return call<decltype(fmi2SetFMUstate)>("fmi2SetFMUstate")(component_, state);
    }

    void free(fmi2FMUstate& state) {
        EXPECT_EQ(call<decltype(fmi2FreeFMUstate)>("fmi2FreeFMUstate")(component_, &state), fmi2OK);
        EXPECT_EQ(state, nullptr);
    }

    std::string serialise(fmi2FMUstate state) {
        std::size_t size = 0;
        EXPECT_EQ(call<decltype(fmi2SerializedFMUstateSize)>("fmi2SerializedFMUstateSize")(
                      component_, state, &size),
                  fmi2OK);
        std::string bytes(size, '\0');
        const auto serialize = call<decltype(fmi2SerializeFMUstate)>("fmi2SerializeFMUstate");
        EXPECT_EQ(serialize(component_, state, bytes.data(), size - 1), fmi2Error);
        EXPECT_EQ(serialize(component_, state, bytes.data(), size), fmi2OK);
        return bytes;
    }

    fmi2Status deserialise(const std::string& bytes, fmi2FMUstate& state) {
        return call<decltype(fmi2DeSerializeFMUstate)>("fmi2DeSerializeFMUstate")(
            component_, bytes.data(), bytes.size(), &state);
    }

  private:
    SlaveFile file_;
    platform::SharedLibrary library_;
    fmi2Component component_ = nullptr;
};

class FmuState : public testing::TestWithParam<SlaveFile> {};

TEST_P(FmuState, RepeatsWhatCameAfterItToTheLastBit) {
    LoadedSlave slave(GetParam());
    slave.initialise();
    slave.run(1, 20);
    fmi2FMUstate state = nullptr;
    ASSERT_EQ(slave.save(state), fmi2OK);
    const std::vector<double> after = slave.run(21, 40);
    EXPECT_NE(after, slave.run(21, 40)) << "a slave that remembers nothing proves nothing";
    ASSERT_EQ(slave.restore(state), fmi2OK);
    EXPECT_EQ(slave.run(21, 40), after);

    LoadedSlave other(GetParam());
    fmi2FMUstate copy = nullptr;
    ASSERT_EQ(other.deserialise(slave.serialise(state), copy), fmi2OK);
    ASSERT_EQ(other.restore(copy), fmi2OK);
    EXPECT_EQ(other.run(21, 40), after) << "parameters included";
    other.free(copy);
    slave.free(state);
    slave.free(state);
}

TEST_P(FmuState, KnowsThatNoStepWasMade) {
    LoadedSlave slave(GetParam());
    slave.initialise();
    const double before = slave.output();
    fmi2FMUstate state = nullptr;
    slave.run(1, 3);
    ASSERT_EQ(slave.save(state), fmi2OK);
    LoadedSlave untouched(GetParam());
    untouched.initialise();
    ASSERT_EQ(untouched.save(state), fmi2OK) << "a handle is used again";
    ASSERT_EQ(slave.restore(state), fmi2OK);
    EXPECT_EQ(slave.output(), before);
    slave.free(state);
}

TEST_P(FmuState, RefusesBytesThatAreNone) {
    LoadedSlave slave(GetParam());
    fmi2FMUstate state = nullptr;
    ASSERT_EQ(slave.save(state), fmi2OK);
    const std::string bytes = slave.serialise(state);
    slave.free(state);
    std::string ofAnother = bytes;
    ofAnother[5] ^= 1;
    for (const std::string& wrong : {std::string(), bytes.substr(1), bytes + 'x', ofAnother}) {
        EXPECT_EQ(slave.deserialise(wrong, state), fmi2Error);
        EXPECT_EQ(lastMessage, "The bytes that were given are no state of this FMU.");
        EXPECT_EQ(state, nullptr);
    }
    EXPECT_EQ(slave.restore(nullptr), fmi2Error);
    EXPECT_EQ(lastMessage, "The FMU state that was given is a null pointer.");
}

INSTANTIATE_TEST_SUITE_P(PhysicalFmus, FmuState, testing::Values(tyre, shockAbsorber),
                         [](const auto& given) {
                             return given.index == 0 ? "Tyre" : "ShockAbsorber";
                         });

TEST(ScriptedSlave, SaysThatItOffersNoState) {
    LoadedSlave slave(scripted);
    fmi2FMUstate state = nullptr;
    EXPECT_EQ(slave.save(state), fmi2Error);
    EXPECT_EQ(lastMessage, "This FMU does not offer its state: modelDescription.xml does not "
                           "announce canGetAndSetFMUstate.");
    EXPECT_EQ(state, nullptr);
}

} // namespace
