#include "reference_host/argument_list.h"

namespace reference_host {

namespace {

constexpr std::string_view separators = " \t\r\n";

/// Takes the first argument off `rest`, which begins with one.
std::string takeArgument(std::string_view& rest) {
    std::string argument;
    bool quoted = false;
    while (!rest.empty() && (quoted || separators.find(rest.front()) == std::string_view::npos)) {
        if (rest.front() == '"') {
            quoted = !quoted;
        } else {
            argument += rest.front();
        }
        rest.remove_prefix(1);
    }
    return argument;
}

void skipSeparators(std::string_view& rest) {
    const std::size_t begin = rest.find_first_not_of(separators);
    rest.remove_prefix(begin == std::string_view::npos ? rest.size() : begin);
}

} // namespace

ArgumentList::ArgumentList(std::string_view commandLine) {
    skipSeparators(commandLine);
    while (!commandLine.empty()) {
        texts_.push_back(takeArgument(commandLine));
        skipSeparators(commandLine);
    }
    values_.clear();
    for (std::string& text : texts_) {
        values_.push_back(text.data());
    }
    values_.push_back(nullptr);
}

int ArgumentList::count() const {
    return static_cast<int>(texts_.size());
}

char** ArgumentList::values() {
    return values_.data();
}

} // namespace reference_host
