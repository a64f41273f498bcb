#include "programs/support/command_line.h"

#include "programs/support/input_error.h"
#include "programs/support/nearest_text.h"
#include "programs/support/number_text.h"
#include "programs/support/program_description.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

namespace program_support {

namespace {

std::string nearestOption(const CLI::App& app, const std::string& word) {
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
    }
    return nearestText(word, names);
}

/// About the first word that no option takes, as the user wrote it: the rest follows from it.
std::string unexpectedWord(const CLI::App& app, int argc, const char* const* argv) {
    const auto extras = app.remaining();
    const std::vector<std::string> words(argv + 1, argv + argc);
    const auto first = std::ranges::find_if(words, [&](const std::string& word) {
        return std::ranges::find(extras, word) != extras.end();
    });
    const std::string word = first != words.end() ? *first : extras.front();
    if (!word.starts_with('-')) {
        return "'" + word + "' is not expected;";
    }
    const auto nearest = nearestOption(app, word.substr(0, word.find('=')));
    return "there is no option '" + word + "';" +
           (nearest.empty() ? "" : " did you mean " + nearest + "?");
}

} // namespace

void beginCommandLine(CLI::App& app, const std::string& name, const std::string& description) {
    app.name(name);
    app.description(description);
    app.set_help_flag();
    // A path that begins with "/" is a path on Windows too.
    app.allow_windows_style_options(false);
    const auto addText = [&](const std::string& option, std::string (*text)(const CLI::App&)) {
        return app.add_flag_callback(option, [&app, text] {
            std::cout << text(app);
            throw CLI::Success();
        });
    };
    const std::string hiddenGroup;
    addText("-h,--help", helpText)->description("Print this help and end");
    app.set_version_flag("--version", name + " " + PROGRAM_VERSION, "Print the version and end");
    addText("--man-page", manPage)->group(hiddenGroup);
    addText("--completion", bashCompletion)->group(hiddenGroup);
}

std::optional<int> readCommandLine(CLI::App& app, int argc, const char* const* argv) {
    try {
        app.parse(argc, argv);
        return std::nullopt;
    } catch (const CLI::Success& success) {
        return app.exit(success);
    } catch (const CLI::ExtrasError&) {
        throw InputError(unexpectedWord(app, argc, argv) + " see " + app.get_name() + " --help");
    } catch (const CLI::ParseError& error) {
        throw InputError(std::string(error.what()) + "; see " + app.get_name() + " --help");
    }
}

CLI::Option* addTextOption(CLI::App& app, const std::string& name, std::string& value,
                           const std::string& type, const std::string& description) {
    return app.add_option(name, value, description)->type_name(type);
}

CLI::Option* addNumberOption(CLI::App& app, const std::string& name, std::optional<double>& value,
                             const std::string& unit, const std::string& description) {
    const auto read = [name, &value](const std::string& text) { value = parseNumber(text, name); };
    return app.add_option_function<std::string>(name, read, description)->type_name(unit);
}

void addTimeoutOption(CLI::App& app, std::optional<double>& timeout) {
    addNumberOption(app, "--timeout", timeout, "SECONDS",
                    "End after that time of the clock, between two steps");
}

void requirePositive(const std::optional<double>& value, const std::string& option) {
    if (value && *value <= 0.0) {
        throw InputError(option + " is " + shortNumber(*value) + "; give a number above 0");
    }
}

} // namespace program_support
