/**
 * @file fmi_tools.h
 * @brief Runs one FMI 2.0 Co-Simulation FMU: the C interface of the FMU runtime.
 *
 * @code
 * FmiToolsInstance* fmu = fmiToolsLoadFmu("tyre.fmu", "/tmp/run", "/opt/tools/");
 * if (fmu != NULL) {
 *     fmiToolsSetLogFile(fmu, "tyre.out");
 *     fmiToolsSetResultsFile(fmu, "tyre.csv");
 *     fmiToolsSetVariableValue(fmu, "radius", "0.31");
 *     if (fmiToolsInitialize(fmu) == 0) {
 *         fmiToolsSimulateToT(fmu, 0.001);
 *     }
 *     fmiToolsCleanup(fmu);
 * }
 * @endcode
 *
 * @par Order of calls
 * 1. fmiToolsLoadFmu()
 * 2. fmiToolsSetLogFile(), then fmiToolsEnableDebugLogs() if wanted
 * 3. fmiToolsSetResultsFile()
 * 4. fmiToolsAttachUserData() if wanted; setters for start values
 * 5. fmiToolsInitialize(); or fmiToolsStartInitialization(), setters of initial values,
 *    fmiToolsEndInitialization()
 * 6. fmiToolsSimulateToT() repeatedly, with getters and setters between the steps; or
 *    fmiToolsSetStartTime(), fmiToolsSetEndTime(), fmiToolsSetLogInterval(), fmiToolsSimulate()
 * 7. fmiToolsCleanup()
 *
 * The runtime checks no order: each function does its work on whatever state the FMU is in.
 *
 * @par Result codes
 * | Code | Meaning |
 * |------|---------|
 * | 0 | success; most functions also answer 0 to a null handle, see each function |
 * | -1 | null handle, or the results file could not be set up |
 * | -200 | setting up the experiment, entering or leaving initialisation mode failed |
 * | -201 | a step (fmi2DoStep) did not return OK |
 * | -202 | no variable of that name, its type is not supported, an FMI call did not return OK, or a row of results could not be written |
 *
 * What fails is also a line in the log, except: a null handle; a load, whose reasons are on
 * standard error; a log or results file that cannot be opened; a null pointer given to
 * fmiToolsGetUserData(); and fmiToolsSetVariableValue() for a null text or a variable that does not
 * exist or has no supported type. An exception that leaves a function of the FMU is the failure of
 * that call. Standard error says by FMI's name with which status a call failed, such as
 * "fmi2DoStep returned Discard". No function throws or ends the process.
 *
 * @par The log
 * A line is "[time][module][category][level] message": the local time in the form of the locale
 * (strftime "%c"), "FMITools" or the FMU's instance name, "None" or the FMU's category, "OK",
 * "Warning", "Error", "Debug" or the name of the FMU's status. Messages are cut to 255 characters,
 * an FMU's instance name and category to 1024. Real numbers are written as printf does for "%.16e",
 * with a point whatever the locale; numbers that are not finite as "inf", "-inf", "nan" and "-nan".
 * An FMU may send lines from threads of its own, at any time until its library is unloaded: they
 * are serialised with all others, but a line that has waited for a second is dropped, and so are
 * all that come after fmiToolsCleanup() has closed the log. A library that is unloaded while one of
 * its threads is running, be it in its own code or in the logger, is the fault of its FMU.
 *
 * @par Conventions
 * Texts are zero-terminated; the runtime copies those that it keeps. Paths are narrow texts in the
 * code page of the process. Times are in seconds. A handle is used from one thread at a time;
 * several handles are independent of each other. An FMU whose instantiation failed is never called:
 * every function that would need it answers its failure code, apart from fmiToolsSetVariableValue()
 * and fmiToolsSimulate(), which answer 0 and log the failure. A null name is that of no variable.
 */
#ifndef FMI_TOOLS_H
#define FMI_TOOLS_H

#include <stdint.h> // NOLINT(modernize-deprecated-headers): for C, too

#if defined(_WIN32)
#if defined(FMI_TOOLS_BUILDING)
#define FMI_TOOLS_EXPORT __declspec(dllexport)
#else
#define FMI_TOOLS_EXPORT __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define FMI_TOOLS_EXPORT __attribute__((visibility("default")))
#else
#define FMI_TOOLS_EXPORT
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** One loaded FMU with its log file and its results file. Made by fmiToolsLoadFmu(), ended by
 *  fmiToolsCleanup(). */
typedef struct FmiToolsInstance FmiToolsInstance; // NOLINT(modernize-use-using): for C, too

/**
 * Unpacks, checks, loads and instantiates an FMU.
 *
 * Prints the two paths on standard error; messages of the FMI library during the load appear there
 * too. The instance name is "FMU instance" (fmi2Instantiate, FMI 2.0 section 2.1.5), logging is on,
 * the FMU is not visible. The default experiment of the model description becomes start time, end
 * time and log interval.
 *
 * @param fmuPath          path of the FMU archive.
 * @param workingDirectory directory the archive is unpacked into, absolute or relative to the
 *                         process's current directory; created when it does not exist; kept
 *                         after the run. On Windows a path is absolute when its second character
 *                         is ":" or it begins with two separators, elsewhere when it begins with
 *                         "/". The absolute path has at most 259 characters on Windows and 4095
 *                         elsewhere. One that cannot be used is a line on standard error with the
 *                         reason.
 * @param scriptDirectory  directory of the clean-up script, with its closing separator
 *                         (see fmiToolsCleanup()).
 * @return a handle that fmiToolsCleanup() ends; null when an argument is null, the working
 *         directory cannot be used, the archive cannot be unpacked, the FMU is not FMI 2.0, offers
 *         no Co-Simulation, its library does not load, or it allows only one instance in a process
 *         (canBeInstantiatedOnlyOncePerProcess, section 4.3.1) and there is one. A failed fmi2Instantiate still yields a
 *         handle: the calls that need the FMU then answer their failure codes.
 */
FMI_TOOLS_EXPORT FmiToolsInstance*
fmiToolsLoadFmu(const char* fmuPath, const char* workingDirectory, const char* scriptDirectory);

/**
 * Sends the log lines to a file from now on; before, they go to standard output.
 *
 * Every line is on its way to the file when the call that wrote it returns. The file is this
 * handle's until fmiToolsCleanup() or the end of the process: no other handle, of whatever process,
 * writes to it, and everybody may read it. A path that cannot be opened is no error: the lines stay
 * on standard output. Where that is because another handle has the file, which is left as it is, a
 * line of level "Error" says so. A line that cannot be written, such as on
 * a full disk, is lost and no call fails for it; standard error says so once, with the reason. A
 * second call switches to the new file; the first one is closed by fmiToolsCleanup().
 *
 * @param instance the handle.
 * @param path     the file, created, or truncated once it is this handle's; null is a file that
 *                 cannot be opened.
 * @return 0; -1 for a null handle.
 */
FMI_TOOLS_EXPORT int32_t fmiToolsSetLogFile(FmiToolsInstance* instance, const char* path);

/**
 * Switches the log lines of level "Debug" on or off; they are off after loading.
 *
 * @param instance the handle.
 * @param enabled  0 drops the lines, any other value writes them.
 * @return 0; -1 for a null handle.
 */
FMI_TOOLS_EXPORT int32_t fmiToolsEnableDebugLogs(FmiToolsInstance* instance, int32_t enabled);

/**
 * Reads the tool that generated the FMU (attribute generationTool, FMI 2.0 section 2.2.1).
 *
 * @param instance the handle.
 * @return a text owned by the handle and valid until fmiToolsCleanup(), empty when the model
 *         description names no tool; null for a null handle.
 */
FMI_TOOLS_EXPORT const char* fmiToolsGetGenerationTool(FmiToolsInstance* instance);

/**
 * Opens the results file and writes its header.
 *
 * The columns are the time and, in the order of the model description, every Real variable that is
 * not local, as "name[unit]" with "-" for no unit. A row follows after each successful step. The
 * file is this handle's as that of fmiToolsSetLogFile() is. A path that cannot be opened is no
 * error: the run goes on without results; where another handle has the file the log says so. A second call switches to the
 * new file, which gets a header of its own; the first one is closed by fmiToolsCleanup().
 *
 * @param instance the handle.
 * @param path     the file, created, or truncated once it is this handle's; null is a file that
 *                 cannot be opened.
 * @return 0; -1 for a null handle or when memory for the columns ran out, with the log line "Failed
 *         to setup results logging".
 */
FMI_TOOLS_EXPORT int32_t fmiToolsSetResultsFile(FmiToolsInstance* instance, const char* path);

/**
 * Stores a pointer of the caller's; the runtime never looks at what it points to.
 *
 * @param instance the handle.
 * @param userData the pointer, owned by the caller.
 * @return 0; -1 for a null handle.
 */
FMI_TOOLS_EXPORT int32_t fmiToolsAttachUserData(FmiToolsInstance* instance, void* userData);

/**
 * Reads the pointer stored by fmiToolsAttachUserData().
 *
 * @param instance the handle.
 * @param userData receives the pointer, null when none was attached.
 * @return 0; -1 for a null handle or a null userData, with nothing written.
 */
FMI_TOOLS_EXPORT int32_t fmiToolsGetUserData(FmiToolsInstance* instance, void** userData);

/**
 * Tells whether the FMU has a variable of a name (FMI 2.0 section 2.2.7).
 *
 * @param instance the handle.
 * @param name     the variable's full name.
 * @param exists   receives 1 or 0; 0 for a null handle. May be null.
 * @return 0, always.
 */
FMI_TOOLS_EXPORT int32_t fmiToolsGetVariableExists(FmiToolsInstance* instance, const char* name,
                                                   int32_t* exists);

/**
 * Sets a variable from a text, by the variable's own type.
 *
 * Real: the text as atof() reads it in the C locale, with a decimal point whatever locale the
 * process has set. Integer, Enumeration and Boolean: as atoi() reads it there, set through
 * fmi2SetInteger; so 1 and 0 are the spellings of a Boolean. String: the text itself. A text that
 * is no number counts as 0.
 *
 * @param instance the handle.
 * @param name     the variable's full name.
 * @param value    the text.
 * @return 0 as soon as the set was attempted, even when the FMU refused it (the refusal is only
 *         logged); -202, without a log line, when there is no such variable, its type is not
 *         supported or the text is null; 0 for a null handle.
 */
FMI_TOOLS_EXPORT int32_t fmiToolsSetVariableValue(FmiToolsInstance* instance, const char* name,
                                                  const char* value);

/**
 * Sets a Real variable (fmi2SetReal, FMI 2.0 section 2.1.7) and logs "Set input name=value".
 *
 * The variable's declared type is not compared: the FMU decides. The same holds for the other typed
 * setters and getters.
 *
 * @param instance the handle.
 * @param name     the variable's full name.
 * @param value    the value in the variable's unit.
 * @return 0; -202, with a log line, when there is no such variable or the FMU did not return OK;
 *         0 for a null handle.
 */
FMI_TOOLS_EXPORT int32_t fmiToolsSetRealVariableValue(FmiToolsInstance* instance, const char* name,
                                                      double value);

/**
 * Sets an Integer variable (fmi2SetInteger, FMI 2.0 section 2.1.7) and logs "Set input name=value".
 *
 * @param instance the handle.
 * @param name     the variable's full name.
 * @param value    the value; of an enumeration, the number of its item.
 * @return as fmiToolsSetRealVariableValue().
 */
FMI_TOOLS_EXPORT int32_t fmiToolsSetIntegerVariableValue(FmiToolsInstance* instance,
                                                         const char* name, int32_t value);

/**
 * Sets a String variable (fmi2SetString, FMI 2.0 section 2.1.7) and logs "Set input name=value".
 *
 * @param instance the handle.
 * @param name     the variable's full name.
 * @param value    the text, borrowed for the call only.
 * @return as fmiToolsSetRealVariableValue(); -202, with a log line, for a null text, too.
 */
FMI_TOOLS_EXPORT int32_t fmiToolsSetStringVariableValue(FmiToolsInstance* instance,
                                                        const char* name, const char* value);

/**
 * Reads a Real variable (fmi2GetReal, FMI 2.0 section 2.1.7) and logs "Fetched output name=value".
 *
 * @param instance the handle.
 * @param name     the variable's full name.
 * @param value    receives the value in the variable's unit; written only on success.
 * @return 0; -202, with a log line, when there is no such variable, value is null or the FMU did
 *         not return OK;
 *         0 with nothing written for a null handle.
 */
FMI_TOOLS_EXPORT int32_t fmiToolsGetRealVariableValue(FmiToolsInstance* instance, const char* name,
                                                      double* value);

/**
 * Reads an Integer variable (fmi2GetInteger, FMI 2.0 section 2.1.7). Success leaves no log line.
 *
 * @param instance the handle.
 * @param name     the variable's full name.
 * @param value    receives the value; written only on success.
 * @return as fmiToolsGetRealVariableValue().
 */
FMI_TOOLS_EXPORT int32_t fmiToolsGetIntegerVariableValue(FmiToolsInstance* instance,
                                                         const char* name, int32_t* value);

/**
 * Reads a String variable (fmi2GetString, FMI 2.0 section 2.1.7). Success leaves no log line.
 *
 * @param instance the handle.
 * @param name     the variable's full name.
 * @param value    receives a text owned by the FMU and valid until the next call into it; written
 *                 only on success.
 * @return as fmiToolsGetRealVariableValue().
 */
FMI_TOOLS_EXPORT int32_t fmiToolsGetStringVariableValue(FmiToolsInstance* instance,
                                                        const char* name, const char** value);

/**
 * Sets where the grid of fmiToolsSimulate() begins. The FMU itself always starts at 0.
 *
 * @param instance the handle.
 * @param time     seconds.
 * @return 0; -1 for a null handle.
 */
FMI_TOOLS_EXPORT int32_t fmiToolsSetStartTime(FmiToolsInstance* instance, double time);

/**
 * Sets where the grid of fmiToolsSimulate() ends.
 *
 * @param instance the handle.
 * @param time     seconds.
 * @return 0; -1 for a null handle.
 */
FMI_TOOLS_EXPORT int32_t fmiToolsSetEndTime(FmiToolsInstance* instance, double time);

/**
 * Sets the step of fmiToolsSimulate().
 *
 * @param instance the handle.
 * @param interval seconds, positive: with zero or less fmiToolsSimulate() would never end.
 * @return 0, also for a null handle.
 */
FMI_TOOLS_EXPORT int32_t fmiToolsSetLogInterval(FmiToolsInstance* instance, double interval);

/**
 * Sets up the experiment and takes the FMU through initialisation mode (fmi2SetupExperiment,
 * fmi2EnterInitializationMode, fmi2ExitInitializationMode, FMI 2.0 section 2.1.6). The experiment
 * starts at the FMU's current time, without tolerance and stop time.
 *
 * @param instance the handle.
 * @return 0; -200, with log lines, when one of the calls did not return OK; -1 for a null handle.
 */
FMI_TOOLS_EXPORT int32_t fmiToolsInitialize(FmiToolsInstance* instance);

/**
 * The first half of fmiToolsInitialize(): sets up the experiment and enters initialisation mode, so
 * that initial values can be set.
 *
 * @param instance the handle.
 * @return as fmiToolsInitialize().
 */
FMI_TOOLS_EXPORT int32_t fmiToolsStartInitialization(FmiToolsInstance* instance);

/**
 * The second half of fmiToolsInitialize(): leaves initialisation mode.
 *
 * @param instance the handle.
 * @return as fmiToolsInitialize().
 */
FMI_TOOLS_EXPORT int32_t fmiToolsEndInitialization(FmiToolsInstance* instance);

/**
 * Advances the FMU to a time in one step (fmi2DoStep, FMI 2.0 section 4.2.2) and writes a row of
 * results.
 *
 * A target that is not beyond the current time by more than 2^-52 s makes no step; the row is
 * written all the same.
 *
 * A row that cannot be written, such as on a full disk, is left out as a whole and "Results logging
 * failed"; the reason is in the log once for each file. The FMU has made its step then, and the
 * caller may go on.
 *
 * @param instance the handle.
 * @param time     the target in seconds; becomes the current time exactly.
 * @return 0; -201 when the step did not return OK (time and results stay as they were); -202 when a
 *         value of the row could not be read or the row could not be written; 0 for a null handle.
 *         Failures are logged.
 */
FMI_TOOLS_EXPORT int32_t fmiToolsSimulateToT(FmiToolsInstance* instance, double time);

/**
 * Steps the FMU through the grid of start time, end time and log interval, with a row of results
 * after each step.
 *
 * The grid is made by repeated addition; an end time that is not on it is not reached. A step that
 * fails is logged and the next one is attempted.
 *
 * @warning The call never ends when the log interval is zero or negative, or too small to change
 *          the time it is added to. The default is the step size of the FMU's default experiment:
 *          where the FMU is not known, set the interval or check it.
 *
 * @param instance the handle.
 * @return 0, always.
 */
FMI_TOOLS_EXPORT int32_t fmiToolsSimulate(FmiToolsInstance* instance);

/**
 * Ends the FMU (fmi2Terminate, fmi2FreeInstance), closes both files, runs the clean-up script and
 * frees the handle.
 *
 * The script is "fmuclean.bat" on Windows and "fmuclean.sh" elsewhere, in the script directory
 * given to fmiToolsLoadFmu(), called with "." as its argument; without a script nothing but a
 * complaint of the command interpreter happens. An empty script directory is the current one. The
 * log file ends with "Closing plugin" and what the FMU says in those two calls; later lines go to
 * standard output.
 *
 * @param instance the handle; not to be used afterwards.
 * @return 0, always.
 */
FMI_TOOLS_EXPORT int32_t fmiToolsCleanup(FmiToolsInstance* instance);

#ifdef __cplusplus
}
#endif

#endif
