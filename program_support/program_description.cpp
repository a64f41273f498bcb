#include "program_support/program_description.h"

#include <algorithm>
#include <cctype>

namespace program_support {
namespace {

/// The options that --help shows: those in a group.
std::vector<const CLI::Option*> visibleOptions(const CLI::App& app) {
    return app.get_options([](const CLI::Option* option) { return !option->get_group().empty(); });
}

/// `text` so that troff prints it as it is.
std::string troff(const std::string& text) {
    std::string result;
    for (const char character : text) {
        if (character == '\\') {
            result += "\\e";
        } else if (character == '-') {
            result += "\\-";
        } else {
            result += character;
        }
    }
    const bool control = result.starts_with('.') || result.starts_with('\'');
    return control ? "\\&" + result : result;
}

std::string upperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

std::string optionEntry(const CLI::Option& option) {
    std::string entry = ".TP\n\\fB" + troff(option.get_name(false, true)) + "\\fR";
    if (!option.get_positional() && option.get_type_size() > 0) {
        entry += " \\fI" + troff(option.get_type_name()) + "\\fR";
    }
    return entry + "\n" + troff(option.get_description()) + "\n";
}

std::string synopsis(const CLI::App& app) {
    std::string line = ".B " + app.get_name() + "\n[\\fIOPTIONS\\fR]";
    for (const auto* option : visibleOptions(app)) {
        if (option->get_positional()) {
            line += " \\fI" + troff(option->get_name(true)) + "\\fR";
        }
    }
    return line + "\n";
}

/// A name that a shell function may have.
std::string functionName(std::string program) {
    std::replace_if(
        program.begin(), program.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return "_" + program + "_options";
}

std::string longAndShortNames(const CLI::App& app) {
    std::string words;
    for (const auto* option : visibleOptions(app)) {
        for (const auto& name : option->get_snames()) {
            words += " -" + name;
        }
        for (const auto& name : option->get_lnames()) {
            words += " --" + name;
        }
    }
    return words.empty() ? words : words.substr(1);
}

} // namespace

std::string manPage(const CLI::App& app) {
    const auto description = app.get_description();
    std::string page = ".TH " + upperCase(app.get_name()) + " 1 \"\" \"" + app.get_name() + " " +
                       PROGRAM_VERSION + "\" \"User commands\"\n";
    page += ".SH NAME\n" + troff(app.get_name()) + " \\- " +
            troff(description.substr(0, description.find('.'))) + "\n";
    page += ".SH SYNOPSIS\n" + synopsis(app);
    page += ".SH DESCRIPTION\n" + troff(description) + "\n";
    page += ".SH OPTIONS\n";
    for (const auto* option : visibleOptions(app)) {
        page += optionEntry(*option);
    }
    if (!app.get_footer().empty()) {
        page += ".SH NOTES\n.nf\n" + troff(app.get_footer()) + "\n.fi\n";
    }
    return page;
}

std::string bashCompletion(const CLI::App& app) {
    const auto function = functionName(app.get_name());
    return function +
           "() {\n" //
           "    local word=\"${COMP_WORDS[COMP_CWORD]}\"\n"
           "    if [[ \"$word\" == -* ]]; then\n"
           "        COMPREPLY=($(compgen -W '" +
           longAndShortNames(app) +
           "' -- \"$word\"))\n"
           "    fi\n"
           "}\n"
           "complete -o default -F " +
           function + " " + app.get_name() + "\n";
}

} // namespace program_support
