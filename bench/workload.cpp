#include "bench/workload.h"

#include "bench/unzip.h"

#include <pugixml.hpp>

#include <stdexcept>
#include <string_view>

namespace bench {

namespace {

void addVariable(Workload& workload, pugi::xml_node scalar) {
    const Variable variable{scalar.attribute("name").value(),
                            scalar.attribute("valueReference").as_uint()};
    const std::string_view causality = scalar.attribute("causality").value();
    if (causality == "local") {
        return;
    }
    workload.columns.push_back(variable);
    if (causality == "input") {
        workload.inputs.push_back(variable);
    } else if (causality == "output") {
        workload.outputs.push_back(variable);
    }
}

} // namespace

Workload openWorkload(const std::filesystem::path& archive,
                      const std::filesystem::path& directory) {
    unzip(archive, directory);
    const auto file = directory / "modelDescription.xml";
    pugi::xml_document document;
    if (!document.load_file(file.c_str())) {
        throw std::runtime_error("Cannot read the model description " + file.string());
    }
    const pugi::xml_node root = document.document_element();
    Workload workload;
    workload.archive = archive;
    workload.directory = directory;
    workload.identifier = root.child("CoSimulation").attribute("modelIdentifier").value();
    workload.guid = root.attribute("guid").value();
    for (const pugi::xml_node scalar : root.child("ModelVariables")) {
        addVariable(workload, scalar);
    }
    return workload;
}

} // namespace bench
