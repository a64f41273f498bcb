/**
 * @file slave.h
 * @brief What our slaves have in common: variables stored by value reference, and the C++
 * operations behind the FMI functions.
 *
 * A slave derives from Slave, overrides what it does differently and defines makeSlave(). The C
 * functions in slave_exports.cpp, slave_states.cpp and slave_step.cpp forward to it; an exception
 * that leaves an operation becomes a message to the simulation tool and the status fmi2Error.
 */
#pragma once

#include "example_fmus/fmi2_functions.h"
#include "example_fmus/slave/variable_store.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

/** What the simulation tool says when it instantiates a slave; texts that it left out are empty. */
struct Instantiation {
    std::string instanceName;
    std::string guid;
    std::string resourceLocation;
    const fmi2CallbackFunctions* functions = nullptr;
    bool visible = false;
    bool loggingOn = false;
};

/** The experiment as fmi2SetupExperiment gives it; times in seconds. */
struct Experiment {
    std::optional<double> tolerance;
    double startTime = 0.0;
    std::optional<double> stopTime;
};

/** A communication step as fmi2DoStep gives it; times in seconds. */
struct CommunicationStep {
    double time = 0.0; ///< where it begins
    double size = 0.0;
    bool isFinal = true; ///< the tool will not go back to before it (section 4.2.2)
};

/** How many variables of each base type a slave has: value references run from 0 to count - 1. */
struct VariableCounts {
    std::size_t reals = 0;
    std::size_t integers = 0;
    std::size_t booleans = 0;
    std::size_t strings = 0;
};

/** An instance at one moment: the GUID of the model description, then the bytes of all Reals,
 *  Integers and Booleans and of the slave's memory. The GUID tells states of other FMUs apart. */
using SlaveState = std::vector<fmi2Byte>;

/** The bytes of a plain record. */
template <typename Record>
std::span<std::byte> bytesOf(Record& record) {
    static_assert(std::is_trivially_copyable_v<Record>);
    return std::as_writable_bytes(std::span(&record, 1));
}

/** One instance of a slave. Each operation does the work of the FMI function of its name. */
class Slave {
  public:
    Slave(Instantiation instantiation, const VariableCounts& counts);
    virtual ~Slave() = default;
    Slave(const Slave&) = delete;
    Slave& operator=(const Slave&) = delete;

    /** Ends the instance's life: it must not be used afterwards. A slave that wants to notice later
     *  calls with the dead handle overrides this and keeps the object. */
    virtual void freeInstance() { delete this; }

    virtual fmi2Status setDebugLogging(bool loggingOn);
    virtual fmi2Status setupExperiment(const Experiment& experiment);

    virtual fmi2Status enterInitializationMode() { return fmi2OK; }

    virtual fmi2Status exitInitializationMode() { return fmi2OK; }

    virtual fmi2Status terminate() { return fmi2OK; }

    /** Brings the instance back to the state after fmi2Instantiate. */
    virtual fmi2Status reset() = 0;

    virtual fmi2Status getReal(References references, fmi2Real* values);
    virtual fmi2Status getInteger(References references, fmi2Integer* values);
    virtual fmi2Status getBoolean(References references, fmi2Boolean* values);
    virtual fmi2Status getString(References references, fmi2String* values);
    virtual fmi2Status setReal(References references, const fmi2Real* values);
    virtual fmi2Status setInteger(References references, const fmi2Integer* values);
    virtual fmi2Status setBoolean(References references, const fmi2Boolean* values);
    virtual fmi2Status setString(References references, const fmi2String* values);

    /** What fmi2SetFMUstate needs to bring the instance back to now.
     *  @throws std::runtime_error when the slave does not offer its state */
    SlaveState state();

    /** @throws std::runtime_error when @p given is not a state of this FMU, or when the slave does
     *  not offer its state */
    void requireState(const SlaveState& given);

    /** Brings the instance to @p state.
     *  @throws std::runtime_error as requireState() does, with nothing changed */
    void setState(const SlaveState& state);

    virtual fmi2Status doStep(const CommunicationStep& step) = 0;

    virtual fmi2Status cancelStep() { return fmi2Error; }

    virtual fmi2Status getStatus(fmi2StatusKind, fmi2Status&) { return fmi2Discard; }

    virtual fmi2Status getRealStatus(fmi2StatusKind, fmi2Real&) { return fmi2Discard; }

    virtual fmi2Status getIntegerStatus(fmi2StatusKind, fmi2Integer&) { return fmi2Discard; }

    virtual fmi2Status getBooleanStatus(fmi2StatusKind, fmi2Boolean&) { return fmi2Discard; }

    virtual fmi2Status getStringStatus(fmi2StatusKind, fmi2String&) { return fmi2Discard; }

    /** Sends @p message to the simulation tool; one of status fmi2OK only while logging is on. */
    void log(fmi2Status status, const std::string& message) const;

  protected:
    const fmi2CallbackFunctions* functions() const { return instantiation_.functions; }

    const std::string& instanceName() const { return instantiation_.instanceName; }

    VariableStore<double> reals;
    VariableStore<int> integers;
    VariableStore<int> booleans;
    VariableStore<std::string> strings;

    /** All that the slave remembers besides its variables, if it offers its state: for slaves
     *  without Strings, whose memory is a plain record. */
    virtual std::optional<std::span<std::byte>> memory() { return std::nullopt; }

  private:
    std::vector<std::span<std::byte>> stateParts();
    fmi2Status checked(bool known, References references) const;

    Instantiation instantiation_;
};

/**
 * Makes an instance; every slave defines this function.
 *
 * @return the instance, or null when the slave refuses to be instantiated.
 */
std::unique_ptr<Slave> makeSlave(const Instantiation& instantiation);

/** Sends a message of status fmi2Error to the simulation tool that is instantiating a slave. */
void logInstantiationError(const Instantiation& instantiation, const std::string& message);

/** Whether the tool's model description is the one that this binary was built with, whose GUID is
 *  @p guid; otherwise says so in a message. */
bool guidMatches(const Instantiation& instantiation, const std::string& guid);
