#include "programs/support/command_line.h"

#include "programs/support/input_error.h"
#include "programs/support/number_text.h"
#include "programs/support/program_description.h"

#include <iostream>

namespace program_support {

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
