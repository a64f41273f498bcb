/**
 * @file fmi2_functions.h
 * @brief The C interface that an FMI 2.0 slave for co-simulation exports (FMI 2.0
 * sections 2.1, 4.2).
 *
 * Declares all of it: a slave also has the functions whose capability it does not offer, because
 * importers bind every one of them before they look at the capabilities.
 */
#pragma once

#include <cstddef>

#if defined(_WIN32)
#define FMI2_EXPORT __declspec(dllexport)
#else
#define FMI2_EXPORT __attribute__((visibility("default")))
#endif

extern "C" {

using fmi2Component = void*;
using fmi2ComponentEnvironment = void*;
using fmi2FMUstate = void*;
using fmi2ValueReference = unsigned int;
using fmi2Real = double;
using fmi2Integer = int;
using fmi2Boolean = int;
using fmi2Char = char;
using fmi2String = const fmi2Char*;
using fmi2Byte = char;

inline constexpr fmi2Boolean fmi2False = 0;
inline constexpr fmi2Boolean fmi2True = 1;

/** Result of a call. The type is as wide as the C enumeration and may hold any number, because a
 *  slave under test also answers numbers that the standard does not know. */
enum fmi2Status : int { fmi2OK, fmi2Warning, fmi2Discard, fmi2Error, fmi2Fatal, fmi2Pending };

enum fmi2Type : int { fmi2ModelExchange, fmi2CoSimulation };

/** What fmi2GetStatus and its relatives are asked for (section 4.2.3). */
enum fmi2StatusKind : int {
    fmi2DoStepStatus,
    fmi2PendingStatus,
    fmi2LastSuccessfulTime,
    fmi2Terminated
};

using fmi2CallbackLogger = void (*)(fmi2ComponentEnvironment environment, fmi2String instanceName,
                                    fmi2Status status, fmi2String category, fmi2String message,
                                    ...);
using fmi2CallbackAllocateMemory = void* (*)(std::size_t count, std::size_t size);
using fmi2CallbackFreeMemory = void (*)(void* memory);
using fmi2StepFinished = void (*)(fmi2ComponentEnvironment environment, fmi2Status status);

/** What the simulation tool offers to the slave; it stays valid until fmi2FreeInstance
 *  (section 2.1.5). */
struct fmi2CallbackFunctions {
    fmi2CallbackLogger logger;
    fmi2CallbackAllocateMemory allocateMemory;
    fmi2CallbackFreeMemory freeMemory;
    fmi2StepFinished stepFinished;
    fmi2ComponentEnvironment componentEnvironment;
};

// Inquiry and life (sections 2.1.4 to 2.1.6)
FMI2_EXPORT const char* fmi2GetTypesPlatform();
FMI2_EXPORT const char* fmi2GetVersion();
FMI2_EXPORT fmi2Status fmi2SetDebugLogging(fmi2Component component, fmi2Boolean loggingOn,
                                           std::size_t categoryCount,
                                           const fmi2String categories[]);
FMI2_EXPORT fmi2Component fmi2Instantiate(fmi2String instanceName, fmi2Type type, fmi2String guid,
                                          fmi2String resourceLocation,
                                          const fmi2CallbackFunctions* functions,
                                          fmi2Boolean visible, fmi2Boolean loggingOn);
FMI2_EXPORT void fmi2FreeInstance(fmi2Component component);
FMI2_EXPORT fmi2Status fmi2SetupExperiment(fmi2Component component, fmi2Boolean toleranceDefined,
                                           fmi2Real tolerance, fmi2Real startTime,
                                           fmi2Boolean stopTimeDefined, fmi2Real stopTime);
FMI2_EXPORT fmi2Status fmi2EnterInitializationMode(fmi2Component component);
FMI2_EXPORT fmi2Status fmi2ExitInitializationMode(fmi2Component component);
FMI2_EXPORT fmi2Status fmi2Terminate(fmi2Component component);
FMI2_EXPORT fmi2Status fmi2Reset(fmi2Component component);

// Variables (section 2.1.7)
FMI2_EXPORT fmi2Status fmi2GetReal(fmi2Component component, const fmi2ValueReference references[],
                                   std::size_t count, fmi2Real values[]);
FMI2_EXPORT fmi2Status fmi2GetInteger(fmi2Component component,
                                      const fmi2ValueReference references[], std::size_t count,
                                      fmi2Integer values[]);
FMI2_EXPORT fmi2Status fmi2GetBoolean(fmi2Component component,
                                      const fmi2ValueReference references[], std::size_t count,
                                      fmi2Boolean values[]);
FMI2_EXPORT fmi2Status fmi2GetString(fmi2Component component, const fmi2ValueReference references[],
                                     std::size_t count, fmi2String values[]);
FMI2_EXPORT fmi2Status fmi2SetReal(fmi2Component component, const fmi2ValueReference references[],
                                   std::size_t count, const fmi2Real values[]);
FMI2_EXPORT fmi2Status fmi2SetInteger(fmi2Component component,
                                      const fmi2ValueReference references[], std::size_t count,
                                      const fmi2Integer values[]);
FMI2_EXPORT fmi2Status fmi2SetBoolean(fmi2Component component,
                                      const fmi2ValueReference references[], std::size_t count,
                                      const fmi2Boolean values[]);
FMI2_EXPORT fmi2Status fmi2SetString(fmi2Component component, const fmi2ValueReference references[],
                                     std::size_t count, const fmi2String values[]);

// States of the whole slave (section 2.1.8)
FMI2_EXPORT fmi2Status fmi2GetFMUstate(fmi2Component component, fmi2FMUstate* state);
FMI2_EXPORT fmi2Status fmi2SetFMUstate(fmi2Component component, fmi2FMUstate state);
FMI2_EXPORT fmi2Status fmi2FreeFMUstate(fmi2Component component, fmi2FMUstate* state);
FMI2_EXPORT fmi2Status fmi2SerializedFMUstateSize(fmi2Component component, fmi2FMUstate state,
                                                  std::size_t* size);
FMI2_EXPORT fmi2Status fmi2SerializeFMUstate(fmi2Component component, fmi2FMUstate state,
                                             fmi2Byte bytes[], std::size_t size);
FMI2_EXPORT fmi2Status fmi2DeSerializeFMUstate(fmi2Component component, const fmi2Byte bytes[],
                                               std::size_t size, fmi2FMUstate* state);

// Partial derivatives (section 2.1.9)
FMI2_EXPORT fmi2Status fmi2GetDirectionalDerivative(
    fmi2Component component, const fmi2ValueReference unknowns[], std::size_t unknownCount,
    const fmi2ValueReference knowns[], std::size_t knownCount, const fmi2Real knownDifferentials[],
    fmi2Real unknownDifferentials[]);

// Co-simulation (section 4.2)
FMI2_EXPORT fmi2Status fmi2SetRealInputDerivatives(fmi2Component component,
                                                   const fmi2ValueReference references[],
                                                   std::size_t count, const fmi2Integer orders[],
                                                   const fmi2Real values[]);
FMI2_EXPORT fmi2Status fmi2GetRealOutputDerivatives(fmi2Component component,
                                                    const fmi2ValueReference references[],
                                                    std::size_t count, const fmi2Integer orders[],
                                                    fmi2Real values[]);
FMI2_EXPORT fmi2Status fmi2DoStep(fmi2Component component, fmi2Real currentCommunicationPoint,
                                  fmi2Real communicationStepSize,
                                  fmi2Boolean noSetFmuStatePriorToCurrentPoint);
FMI2_EXPORT fmi2Status fmi2CancelStep(fmi2Component component);
FMI2_EXPORT fmi2Status fmi2GetStatus(fmi2Component component, fmi2StatusKind kind,
                                     fmi2Status* value);
FMI2_EXPORT fmi2Status fmi2GetRealStatus(fmi2Component component, fmi2StatusKind kind,
                                         fmi2Real* value);
FMI2_EXPORT fmi2Status fmi2GetIntegerStatus(fmi2Component component, fmi2StatusKind kind,
                                            fmi2Integer* value);
FMI2_EXPORT fmi2Status fmi2GetBooleanStatus(fmi2Component component, fmi2StatusKind kind,
                                            fmi2Boolean* value);
FMI2_EXPORT fmi2Status fmi2GetStringStatus(fmi2Component component, fmi2StatusKind kind,
                                           fmi2String* value);

} // extern "C"
