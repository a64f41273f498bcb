#include "tests/fmus/scripted/script.h"

#include "programs/support/trimmed.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <initializer_list>
#include <limits>
#include <stdexcept>
#include <system_error>

namespace {

using program_support::trimmed;

/** Takes what stands before the first of @p separators off the front of @p text. */
std::string_view takeUntil(std::string_view& text, std::string_view separators) {
    const std::size_t end = std::min(text.find_first_of(separators), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return trimmed(part);
}

int parseNumber(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) {
        throw std::invalid_argument("'" + std::string(text) + "' is not a whole number");
    }
    return number;
}

constexpr std::array<std::string_view, 6> statusNames = {"ok",    "warning", "discard",
                                                         "error", "fatal",   "pending"};

int parseStatus(std::string_view text) {
    const auto name = std::find(statusNames.begin(), statusNames.end(), text);
    return name != statusNames.end() ? static_cast<int>(name - statusNames.begin())
                                     : parseNumber(text);
}

std::string unescaped(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const bool isEscape = text.starts_with("\\n") || text.starts_with("\\s");
        result += !isEscape ? text[0] : text[1] == 'n' ? '\n' : ';';
        text.remove_prefix(isEscape ? 2 : 1);
    }
    return result;
}

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

} // namespace

Script::Script(std::string_view text) {
    while (!text.empty()) {
        const std::string_view statement = takeUntil(text, ";\n");
        if (!statement.empty()) {
            statements_.push_back(parseStatement(statement));
        }
    }
}

std::vector<Action> Script::actionsOf(std::string_view call,
                                      const std::vector<std::string>& variables) {
    std::vector<Action> actions;
    for (Statement& statement : statements_) {
        if (!statement.fits(call, variables)) {
            continue;
        }
        ++statement.seen;
        if (statement.isDue()) {
            actions.push_back(statement.action);
        }
    }
    return actions;
}

bool Script::Statement::fits(std::string_view callName,
                             const std::vector<std::string>& variables) const {
    return (call == callName || call == "any") &&
           (variable.empty() ||
            std::find(variables.begin(), variables.end(), variable) != variables.end());
}

Script::Statement Script::parseStatement(std::string_view text) {
    const std::string whole(text);
    try {
        Statement statement;
        statement.last = std::numeric_limits<int>::max();
        std::string_view call = takeUntil(text, "=");
        statement.action = parseAction(trimmed(text));
        std::string_view name = takeUntil(call, "@");
        parseWhen(call, statement);
        statement.call = takeUntil(name, "(");
        statement.variable = takeUntil(name, ")");
        return statement;
    } catch (const std::invalid_argument& error) {
        throw std::invalid_argument("Script statement '" + whole +
                                    "' is not understood: " + error.what());
    }
}

void Script::parseWhen(std::string_view text, Statement& statement) {
    if (text.empty()) {
        return;
    }
    const bool andLater = text.ends_with('-');
    text.remove_suffix(andLater ? 1 : 0);
    statement.first = parseNumber(text);
    statement.last = andLater ? statement.last : statement.first;
}

Action Script::parseAction(std::string_view text) {
    std::string_view rest = text;
    Action action;
    action.verb = takeUntil(rest, " ");
    if (isOneOf(action.verb, {"log", "logf", "logUnnamed", "logLong", "logAtOnce", "logOn"})) {
        action.status = parseStatus(takeUntil(rest, " "));
        action.category = takeUntil(rest, " ");
        action.text = unescaped(rest);
    } else if (action.verb == "stepFinished") {
        action.status = parseStatus(trimmed(rest));
    } else if (isOneOf(action.verb, {"value", "sleep", "exit", "exitOrderly", "refuse", "throw",
                                     "abort", "crash"})) {
        action.text = trimmed(rest);
    } else {
        action.verb.clear();
        action.status = parseStatus(text);
    }
    return action;
}
