#include "programs/support/program_description.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <vector>

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
    return ".TP\n.B " + troff(optionHeading(option)) + "\n" + troff(option.get_description()) +
           "\n";
}

/// `text` in lines that fit between `indentation` and the width of a terminal; the first one is
/// taken to be indented already.
std::string wrapped(const std::string& text, std::size_t indentation) {
    constexpr std::size_t width = 80;
    std::string result;
    std::size_t column = indentation;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (column > indentation && column + 1 + word.size() > width) {
            result += '\n' + std::string(indentation, ' ');
            column = indentation;
        } else if (column > indentation) {
            result += ' ';
            ++column;
        }
        result += word;
        column += word.size();
    }
    return result + '\n';
}

std::string helpEntry(const CLI::Option& option) {
    constexpr std::size_t indentation = 28;
    std::string entry = "  " + optionHeading(option);
    entry += entry.size() + 1 < indentation ? std::string(indentation - entry.size(), ' ')
                                            : '\n' + std::string(indentation, ' ');
    return entry + wrapped(option.get_description(), indentation);
}

std::string positionalNames(const CLI::App& app) {
    std::string names;
    for (const auto* option : visibleOptions(app)) {
        names += option->get_positional() ? " " + option->get_name(true) : "";
    }
    return names;
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

std::string optionHeading(const CLI::Option& option) {
    if (option.get_positional()) {
        return option.get_name(true);
    }
    std::string heading;
    for (const auto& name : option.get_snames()) {
        heading += (heading.empty() ? "-" : ", -") + name;
    }
    for (const auto& name : option.get_lnames()) {
        heading += (heading.empty() ? "--" : ", --") + name;
    }
    const auto argument = option.get_type_name();
    // A value in brackets may follow a flag, and then without a blank.
    const bool separate = !argument.empty() && !argument.starts_with('[');
    return heading + (separate ? " " : "") + argument;
}

std::string helpText(const CLI::App& app) {
    std::string text = wrapped(app.get_description(), 0);
    text += "\nUsage: " + app.get_name() + " [OPTIONS]" + positionalNames(app) + "\n\n";
    for (const auto* option : visibleOptions(app)) {
        text += helpEntry(*option);
    }
    return app.get_footer().empty() ? text : text + "\n" + wrapped(app.get_footer(), 0);
}

std::string manPage(const CLI::App& app) {
    const auto description = app.get_description();
    std::string page = ".TH " + upperCase(app.get_name()) + " 1 \"\" \"" + app.get_name() + " " +
                       PROGRAM_VERSION + "\" \"User commands\"\n";
    page += ".SH NAME\n" + troff(app.get_name()) + " \\- " +
            troff(description.substr(0, description.find(". "))) + "\n";
    page += ".SH SYNOPSIS\n.B " + app.get_name() + "\n[\\fIOPTIONS\\fR]\\fI" +
            troff(positionalNames(app)) + "\\fR\n";
    page += ".SH DESCRIPTION\n" + troff(description) + "\n";
    page += ".SH OPTIONS\n";
    for (const auto* option : visibleOptions(app)) {
        page += optionEntry(*option);
    }
    if (!app.get_footer().empty()) {
        page += ".SH NOTES\n" + troff(app.get_footer()) + "\n";
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
