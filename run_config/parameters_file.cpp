#include "run_config/parameters_file.h"

#include "platform/plain_number.h"
#include "run_config/console.h"

#include <pugixml.hpp>

#include <algorithm>
#include <array>
#include <exception>
#include <string_view>

namespace run_config {

namespace {

bool isKnownType(std::string_view type) {
    constexpr std::array<std::string_view, 4> types{"Real", "Integer", "String", "Boolean"};
    return std::ranges::find(types, type) != types.end();
}

void readParameter(const pugi::xml_node& parameter, FmuParameterMap& parameters) {
    const char* name = parameter.attribute("Name").value();
    const char* type = parameter.attribute("Type").value();
    if (!isKnownType(type)) {
        printLine({"Ignoring parameter ", name, " of unknown type ", type});
        return;
    }
    try {
        parameters.insert_or_assign(name, parameter.child_value());
    } catch (const std::exception& error) {
        printLine({error.what(), ". Ignoring malformed parameter ", name});
    }
}

} // namespace

bool readParametersFile(const std::string& path, FmuParameterMap& parameters) {
    pugi::xml_document document;
    if (!document.load_file(path.c_str())) {
        printLine({"Failed to parse FMU parameters file: ", path});
        return false;
    }
    const auto settings = document.child("FMUSettings");
    if (platform::realOf(settings.attribute("Version").value()) != 1.0) {
        printLine({"Version of FMU parameters file"});
        return false;
    }
    for (const auto parameter : settings.child("Parameters").children("Parameter")) {
        readParameter(parameter, parameters);
    }
    return true;
}

} // namespace run_config
