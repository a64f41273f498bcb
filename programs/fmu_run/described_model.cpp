#include "programs/fmu_run/described_model.h"

#include "fmi_import/model_description/enum_text.h"
#include "fmi_import/model_description/number_text.h"
#include "fmi_import/model_description/xml_reader.h"

#include <string>
#include <utility>

namespace fmu_run {

using fmi_import::isSame;
using fmi_import::XmlElement;
using fmi_import::XmlReader;

namespace {

const char* orEmpty(const char* text) {
    return text != nullptr ? text : "";
}

DescribedType typeIn(const XmlElement& element, fmi2_base_type_enu_t type) {
    return {element.line,
            type,
            element.attribute("start"),
            element.attribute("min"),
            element.attribute("max"),
            element.attribute("unit"),
            element.attribute("displayUnit"),
            element.attribute("declaredType"),
            element.attribute("derivative")};
}

DescribedVariable variableIn(const XmlElement& element) {
    DescribedVariable variable;
    variable.line = element.line;
    variable.name = orEmpty(element.attribute("name"));
    variable.valueReference =
        fmi_import::unsignedFromText(orEmpty(element.attribute("valueReference")));
    if (const char* text = element.attribute("causality")) {
        variable.causality =
            fmi_import::fromText(text, fmi2_causality_to_string, fmi2_causality_enu_unknown);
    }
    if (const char* text = element.attribute("variability")) {
        variable.variability =
            fmi_import::fromText(text, fmi2_variability_to_string, fmi2_variability_enu_unknown);
    }
    if (const char* text = element.attribute("initial")) {
        variable.givenInitial =
            fmi_import::fromText(text, fmi2_initial_to_string, fmi2_initial_enu_unknown);
    }
    return variable;
}

/// Fills a DescribedModel from the elements of its document.
class ModelReader {
  public:
    explicit ModelReader(DescribedModel& model) : xml_(model.text), model_(model) {}

    /// False for another version than FMI 2.0.
    bool read() {
        const XmlElement root = xml_.root();
        if (!std::string_view(orEmpty(root.attribute("fmiVersion"))).starts_with("2.0")) {
            return false;
        }
        for (XmlElement child; xml_.nextChild(root, child);) {
            readChild(child);
        }
        return true;
    }

  private:
    void readChild(const XmlElement& child) {
        if (isSame(child.name, "CoSimulation")) {
            model_.identifier = child.attribute("modelIdentifier");
            model_.handlesVariableStep =
                fmi_import::booleanFromText(
                    orEmpty(child.attribute("canHandleVariableCommunicationStepSize")))
                    .value_or(false);
        } else if (isSame(child.name, "DefaultExperiment")) {
            model_.experiment = {child.line, child.attribute("startTime"),
                                 child.attribute("stopTime"), child.attribute("stepSize")};
        } else if (isSame(child.name, "UnitDefinitions")) {
            readUnits(child);
        } else if (isSame(child.name, "TypeDefinitions")) {
            readTypes(child);
        } else if (isSame(child.name, "ModelVariables")) {
            readVariables(child);
        } else if (isSame(child.name, "ModelStructure")) {
            readStructure(child);
        }
    }

    void readUnits(const XmlElement& parent) {
        for (XmlElement unit; xml_.nextChild(parent, unit);) {
            auto& displayUnits = model_.units[orEmpty(unit.attribute("name"))];
            for (XmlElement child; xml_.nextChild(unit, child);) {
                if (isSame(child.name, "DisplayUnit")) {
                    displayUnits.insert(orEmpty(child.attribute("name")));
                }
            }
        }
    }

    void readTypes(const XmlElement& parent) {
        for (XmlElement simpleType; xml_.nextChild(parent, simpleType);) {
            const std::string_view name = orEmpty(simpleType.attribute("name"));
            if (const auto type = readType(simpleType)) {
                model_.types.emplace(name, *type);
            }
        }
    }

    void readVariables(const XmlElement& parent) {
        for (XmlElement scalar; xml_.nextChild(parent, scalar);) {
            if (isSame(scalar.name, "ScalarVariable")) {
                DescribedVariable variable = variableIn(scalar);
                variable.element = readType(scalar);
                model_.variables.push_back(variable);
            }
        }
    }

    std::optional<DescribedType> readType(const XmlElement& parent) {
        std::optional<DescribedType> result;
        for (XmlElement child; xml_.nextChild(parent, child);) {
            const auto type = fmi_import::baseTypeFromElement(child.name);
            if (type && !result) {
                result = typeIn(child, *type);
            }
        }
        return result;
    }

    void readStructure(const XmlElement& parent) {
        for (XmlElement list; xml_.nextChild(parent, list);) {
            if (isSame(list.name, "Outputs")) {
                readUnknowns(list, model_.outputs);
            } else if (isSame(list.name, "Derivatives")) {
                readUnknowns(list, model_.derivatives);
            } else if (isSame(list.name, "InitialUnknowns")) {
                readUnknowns(list, model_.initialUnknowns);
            }
        }
    }

    void readUnknowns(const XmlElement& parent, std::vector<DescribedUnknown>& unknowns) {
        for (XmlElement unknown; xml_.nextChild(parent, unknown);) {
            if (isSame(unknown.name, "Unknown")) {
                unknowns.push_back({unknown.line, orEmpty(unknown.attribute("index"))});
            }
        }
    }

    XmlReader xml_;
    DescribedModel& model_;
};

} // namespace

std::optional<DescribedModel> readDescribedModel(const std::string& path) {
    auto bytes = fmi_import::readFile(path);
    if (!bytes) {
        return std::nullopt;
    }
    try {
        DescribedModel model;
        model.text = fmi_import::asUtf8(std::move(*bytes), true);
        return ModelReader(model).read() ? std::optional(std::move(model)) : std::nullopt;
    } catch (const fmi_import::XmlFault&) {
        return std::nullopt; // The import library, which reads it too, says what is wrong.
    }
}

} // namespace fmu_run
