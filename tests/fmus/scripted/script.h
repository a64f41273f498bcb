/**
 * @file script.h
 * @brief The language in which a test tells the scripted slave what to do in which call.
 *
 * A script is a list of statements, separated by ";" or line ends:
 *
 *     CALL[(VARIABLE)][@WHEN]=ACTION
 *
 * CALL is the FMI function's name without "fmi2", in lower case at the front: `instantiate`,
 * `setupExperiment`, `enterInitializationMode`, `getReal`, `doStep`, `terminate`,
 * `freeInstance`..., or `load`, `unload` for the binary itself, or `any`. VARIABLE restricts a
 * getter or setter to calls for that variable. WHEN counts the calls that fit, from the moment the
 * script was given: `3` is the third, `3-` the third and all later ones; without it each call fits.
 * All statements that fit a call are carried out in their order. Blanks around the parts do not
 * matter. ACTION is one of:
 *
 *     STATUS                 answer ok, warning, discard, error, fatal, pending or any number;
 *                            after an answer other than ok and warning the call leaves all values
 *                            alone
 *     value VALUE            a getter's value instead of the variable's: a number, nan, inf, -inf,
 *                            a text, or null for a null text
 *     log STATUS CATEGORY MESSAGE
 *                            send a message; the category null is a null pointer, so is the message
 *                            null; in the message \n is a line end, \s a semicolon
 *     logf STATUS CATEGORY MESSAGE
 *                            the same with the arguments ("text", 42, 2.5) for a format like
 *                            "%s %d %g"
 *     logUnnamed STATUS CATEGORY MESSAGE
 *                            the same without arguments, with a null instance name
 *     logLong STATUS CATEGORY LENGTH
 *                            send a message of that many letters x
 *     logAtOnce STATUS CATEGORY COUNT
 *                            send that many messages from each of four threads at once
 *     logOn STATUS CATEGORY MESSAGE
 *                            send it from a thread of the binary's own, over and over until the
 *                            binary is unloaded
 *     stepFinished STATUS    call the tool's stepFinished
 *     refuse                 instantiate: answer null
 *     sleep SECONDS          take that long
 *     throw                  let an exception of a type of the binary's own leave the function
 *     abort                  end the process by std::abort
 *     exit CODE              end the process at once with that exit status
 *     exitOrderly CODE       as exit() does
 *     crash                  write to address 0
 *
 * In `unload` messages go to the tool of the instance freed last. `load`, `unload` and `instantiate` obey the environment variable SCRIPTED_FMU_SCRIPT only, which
 * also is an instance's script until its parameter `script` is set. A malformed statement is
 * answered with fmi2Error and a message where it was set, and refuses the instantiation in the
 * environment.
 */
#pragma once

#include <string>
#include <string_view>
#include <vector>

/** One thing to do. */
struct Action {
    std::string verb;     ///< empty for a plain answer
    int status = 0;       ///< of the answer, the message or stepFinished
    std::string category; ///< of the message
    std::string text;     ///< message, value, length, seconds or exit status
};

class Script {
  public:
    Script() = default;

    /** @throws std::invalid_argument naming the statement that is not understood. */
    explicit Script(std::string_view text);

    /**
     * What to do in a call that has just come in.
     *
     * @param call its name
     * @param variables the names of the variables that it asks for; empty for other calls
     */
    std::vector<Action> actionsOf(std::string_view call, const std::vector<std::string>& variables);

  private:
    struct Statement {
        std::string call;
        std::string variable;
        int first = 1;
        int last = 0;
        Action action;
        int seen = 0;

        bool fits(std::string_view callName, const std::vector<std::string>& variables) const;

        bool isDue() const { return seen >= first && seen <= last; }
    };

    static Statement parseStatement(std::string_view text);
    static void parseWhen(std::string_view text, Statement& statement);
    static Action parseAction(std::string_view text);

    std::vector<Statement> statements_;
};
