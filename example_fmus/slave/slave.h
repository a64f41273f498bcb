/**
 * @file slave.h
 * @brief What our slaves have in common: variables stored by value reference, and the C++
 * operations behind the FMI functions.
 *
 * A slave derives from Slave, overrides what it does differently and defines makeSlave(). The C
 * functions in slave_exports.cpp and slave_step.cpp forward to it; an exception that leaves an
 * operation becomes a message to the simulation tool and the status fmi2Error.
 */
#pragma once

#include "example_fmus/fmi2_functions.h"
#include "example_fmus/slave/variable_store.h"

#include <memory>
#include <optional>
#include <string>

/** What the simulation tool says when it instantiates a slave; texts that it left out are empty. */
struct Instantiation {
    std::string instanceName;
    std::string guid;
    std::string resourceLocation;
    const fmi2CallbackFunctions* functions = nullptr;
    bool loggingOn = false;
};

/** The experiment as fmi2SetupExperiment gives it; times in seconds. */
struct Experiment {
    std::optional<double> tolerance;
    double startTime = 0.0;
    std::optional<double> stopTime;
};

/** How many variables of each base type a slave has: value references run from 0 to count - 1. */
struct VariableCounts {
    std::size_t reals = 0;
    std::size_t integers = 0;
    std::size_t booleans = 0;
    std::size_t strings = 0;
};

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

    /** Advances from @p time by @p step, both in seconds. */
    virtual fmi2Status doStep(double time, double step) = 0;

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

  private:
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
