#include "fmi_import/model_description_reader.h"

#include "fmi_import/number_text.h"
#include "fmi_import/reference_order.h"
#include "fmi_import/unit_reader.h"
#include "fmi_import/variable_reader.h"
#include "fmi_import/xml_report.h"

#include <algorithm>
#include <cstring>

namespace fmi_import {

namespace {

constexpr std::array rootAttributes{"fmiVersion",
                                    "modelName",
                                    "guid",
                                    "description",
                                    "generationTool",
                                    "variableNamingConvention",
                                    "author",
                                    "version",
                                    "copyright",
                                    "license",
                                    "generationDateAndTime",
                                    "numberOfEventIndicators"};

/// The first of each list is the identifier; of the last three, in this order, Capabilities is
/// made.
constexpr std::array interfaceAttributes{"modelIdentifier",
                                         "needsExecutionTool",
                                         "canBeInstantiatedOnlyOncePerProcess",
                                         "canNotUseMemoryManagementFunctions",
                                         "completedIntegratorStepNotNeeded",
                                         "canHandleVariableCommunicationStepSize",
                                         "canInterpolateInputs",
                                         "canRunAsynchronuously",
                                         "maxOutputDerivativeOrder",
                                         "canGetAndSetFMUstate",
                                         "canSerializeFMUstate",
                                         "providesDirectionalDerivative"};

constexpr std::array experimentAttributes{"startTime", "stopTime", "tolerance", "stepSize"};

bool isNamed(pugi::xml_node node, const char* name) {
    return isSame(node.name(), name);
}

/// Fills a ModelDescription from the tree of its document.
class Reader {
  public:
    Reader(const XmlReport& report, ModelDescription& description, bool checkNames)
        : report_(report),
          description_(description),
          units_(report, description),
          checkNames_(checkNames) {}

    void read(pugi::xml_node root) {
        report_.progress("fmiModelDescription");
        if (readRoot(root)) {
            readChildren(root, rootChildren);
            finish(root);
        }
    }

  private:
    struct ChildRule {
        const char* name;
        bool isAnnounced;
        void (Reader::*read)(pugi::xml_node);
    };

    /// Children of the root and of ModelStructure, in the order that section 2.2.1 and 2.2.8 have.
    static const std::array<ChildRule, 9> rootChildren;
    static const std::array<ChildRule, 4> structureChildren;

    /// Reads children that may come once each and in this order only.
    void readChildren(pugi::xml_node parent, std::span<const ChildRule> rules) {
        const ChildRule* last = nullptr;
        for (const pugi::xml_node child : parent.children()) {
            const auto rule = std::ranges::find_if(
                rules, [&](const ChildRule& known) { return isNamed(child, known.name); });
            if (child.type() != pugi::node_element) {
                continue;
            }
            if (rule == rules.end()) {
                report_.skipUnknown(child);
            } else if (&*rule == last) {
                report_.skip(child, "Multiple instances of XML element '" +
                                        std::string(child.name()) + "' are not allowed, skipping");
            } else if (last != nullptr && &*rule < last) {
                report_.skipMisplaced(child, last->name);
            } else {
                last = &*rule;
                readChild(child, *rule);
            }
        }
    }

    void readChild(pugi::xml_node child, const ChildRule& rule) {
        if (rule.isAnnounced) {
            report_.progress(rule.name);
        }
        (this->*rule.read)(child);
    }

    /// False when the rest of the document is not to be read.
    bool readRoot(pugi::xml_node root) {
        std::array<const char*, rootAttributes.size()> values{};
        readAttributes(report_, root, rootAttributes, values);
        const auto& [fmiVersion, modelName, guid, description, tool, naming, author, version,
                     copyright, license, date, eventIndicators] = values;
        for (std::size_t required = 0; required < 3; ++required) {
            if (values[required] == nullptr) {
                report_.abortMissing(root, root.name(), rootAttributes[required]);
            }
        }
        description_.modelName = description_.texts.keep(modelName);
        description_.guid = description_.texts.keep(guid);
        description_.description = description_.texts.keep(description);
        description_.generationTool = description_.texts.keep(tool);
        const std::string_view convention = naming != nullptr ? naming : "flat";
        if (convention != "flat" && convention != "structured") {
            report_.recoverFromValue(root, "enumeration", "variableNamingConvention", convention);
            return false;
        }
        return true;
    }

    /// Reads what both interface elements have; the identifier.
    const char* readInterface(pugi::xml_node element, Capabilities& capabilities) {
        std::array<const char*, interfaceAttributes.size()> values{};
        readAttributes(report_, element, interfaceAttributes, values);
        if (values.front() == nullptr) {
            report_.abortMissing(element, element.name(), interfaceAttributes.front());
        }
        if (!isCIdentifier(values.front())) {
            report_.recover(element, "Model identifier '" + std::string(values.front()) +
                                         "' is not valid (must be a valid C-identifier)");
        }
        std::array<bool, interfaceAttributes.size()> flags{};
        for (std::size_t at = 1; at < values.size(); ++at) {
            flags[at] = readFlag(element, interfaceAttributes[at], values[at]);
        }
        capabilities = {flags[9], flags[10], flags[11]};
        return description_.texts.keep(values.front());
    }

    bool readFlag(pugi::xml_node element, const char* name, const char* text) {
        if (text == nullptr || std::strcmp(name, "maxOutputDerivativeOrder") == 0) {
            return false;
        }
        const auto value = booleanFromText(text);
        if (!value) {
            report_.recoverFromValue(element, "enumeration", name, text);
        }
        return value.value_or(false);
    }

    void readModelExchange(pugi::xml_node element) {
        Capabilities ignored;
        description_.modelExchangeIdentifier = readInterface(element, ignored);
        description_.kind |= fmi2_fmu_kind_me;
    }

    void readCoSimulation(pugi::xml_node element) {
        description_.coSimulationIdentifier = readInterface(element, description_.capabilities);
        description_.kind |= fmi2_fmu_kind_cs;
    }

    void readUnits(pugi::xml_node element) { units_.readUnits(element); }

    void readTypes(pugi::xml_node element) { units_.readTypes(element); }

    void readLogCategories(pugi::xml_node element) {
        for (const pugi::xml_node category : element.children("Category")) {
            if (!category.attribute("name")) {
                report_.abortMissing(category, "Category", "name");
            }
        }
    }

    /// A value that cannot be read ends the reading of the element: it and those after it keep
    /// their defaults.
    void readDefaultExperiment(pugi::xml_node element) {
        std::array<const char*, experimentAttributes.size()> values{};
        readAttributes(report_, element, experimentAttributes, values);
        DefaultExperiment& experiment = description_.defaultExperiment;
        for (std::size_t at = 0; at < values.size(); ++at) {
            experiment.isGiven[at] = values[at] != nullptr;
        }
        for (std::size_t at = 0; at < values.size(); ++at) {
            const auto value = realFromText(orEmpty(values[at]));
            if (experiment.isGiven[at] && !value) {
                report_.recoverFromValue(element, "real", experimentAttributes[at], values[at]);
                return;
            }
            experiment.values[at] = value.value_or(experiment.values[at]);
        }
    }

    void ignore(pugi::xml_node) {}

    void readVariables(pugi::xml_node element) {
        const auto scalars = element.children("ScalarVariable");
        count_ = static_cast<std::size_t>(std::distance(scalars.begin(), scalars.end()));
        description_.variables.reserve(count_);
        VariableReader reader(report_, description_, units_, count_);
        for (const pugi::xml_node child : element.children()) {
            if (isNamed(child, "ScalarVariable")) {
                reader.read(child);
            } else if (child.type() == pugi::node_element) {
                report_.skipUnknown(child);
            }
        }
        description_.hasVariableList = true;
        sortByReference(description_);
        if (description_.variables.size() > 1) {
            report_.log().verbose(module::modelDescription, {"Building alias index"});
            resolveAliases(report_, description_);
        }
        indexNames();
    }

    void indexNames() {
        const auto& variables = description_.variables;
        description_.names.reserve(variables.size());
        for (std::uint32_t at = 0; at < variables.size(); ++at) {
            const std::string_view name = variables[at].name;
            if (checkNames_ && description_.find(name) != NameIndex::notFound) {
                report_.error("Two variables with the same name " + std::string(name) +
                              " found. This is not allowed.");
            }
            description_.names.insert(name, at);
        }
    }

    void readStructure(pugi::xml_node element) {
        hasStructure_ = true;
        readChildren(element, structureChildren);
    }

    void readUnknowns(pugi::xml_node element) {
        for (const pugi::xml_node unknown : element.children("Unknown")) {
            const pugi::xml_attribute index = unknown.attribute("index");
            if (!index) {
                report_.abortMissing(unknown, "Unknown", "index");
            }
            const auto number = unsignedFromText(index.value());
            if (!number || *number == 0 || *number > count_) {
                report_.error("The index attribute must have a value between 1 and the number of "
                              "model variables.");
                report_.abort(unknown,
                              "Model structure is not valid due to detected errors. Cannot "
                              "continue.");
            }
        }
    }

    void finish(pugi::xml_node root) {
        if (description_.kind == fmi2_fmu_kind_unknown) {
            report_.abort(root, "Neither ModelExchange nor CoSimulation element were parsed "
                                "correctly. FMU kind not known.");
        }
        const bool sharesIdentifier = description_.kind == fmi2_fmu_kind_me_and_cs &&
                                      std::strcmp(description_.modelExchangeIdentifier,
                                                  description_.coSimulationIdentifier) == 0;
        if (sharesIdentifier) {
            report_.log().info(module::modelDescription,
                               {"Found model identifiers for ModelExchange and CoSimulation"});
        } else if (!hasStructure_) {
            report_.abort(root, "No model structure information available. Cannot continue.");
        }
    }

    const XmlReport& report_;
    ModelDescription& description_;
    UnitReader units_;
    bool checkNames_;
    std::size_t count_ = 0;
    bool hasStructure_ = false;
};

const std::array<Reader::ChildRule, 9> Reader::rootChildren{{
    {"ModelExchange", true, &Reader::readModelExchange},
    {"CoSimulation", true, &Reader::readCoSimulation},
    {"UnitDefinitions", true, &Reader::readUnits},
    {"TypeDefinitions", true, &Reader::readTypes},
    {"LogCategories", true, &Reader::readLogCategories},
    {"DefaultExperiment", false, &Reader::readDefaultExperiment},
    {"VendorAnnotations", true, &Reader::ignore},
    {"ModelVariables", true, &Reader::readVariables},
    {"ModelStructure", true, &Reader::readStructure},
}};

const std::array<Reader::ChildRule, 4> Reader::structureChildren{{
    {"Outputs", true, &Reader::readUnknowns},
    {"Derivatives", true, &Reader::readUnknowns},
    {"DiscreteStates", true, &Reader::readUnknowns},
    {"InitialUnknowns", true, &Reader::readUnknowns},
}};

/// False when the document cannot be read; the reason has been logged.
bool readDocument(const XmlReport& report, FileText text, ModelDescription& description,
                  bool checkNames) {
    pugi::xml_document document;
    char* bytes = text.bytes.get();
    const std::size_t size = text.size;
    description.texts = TextStore(std::move(text));
    const auto result = document.load_buffer_inplace(bytes, size);
    const XmlFault fault = faultOf(document, result, size);
    if (!fault.reason.empty()) {
        report.malformed(fault);
        return false;
    }
    try {
        Reader(report, description, checkNames).read(rootElement(document));
    } catch (const ParseAborted&) {
        return false;
    }
    return true;
}

} // namespace

std::optional<ModelDescription> readModelDescription(const Log& log, const std::string& directory,
                                                     bool checkNames) {
    const std::string path = modelDescriptionPath(directory);
    auto text = readFile(path);
    if (!text) {
        log.fatal(module::modelDescription, {"Cannot open file '", path, "' for parsing"});
        return std::nullopt;
    }
    ModelDescription description;
    const bool read = readDocument(XmlReport(log, path), std::move(*text), description, checkNames);
    return read ? std::optional(std::move(description)) : std::nullopt;
}

bool isCIdentifier(std::string_view text) {
    const auto isLetter = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
    };
    const auto isLetterOrDigit = [&](char c) { return isLetter(c) || (c >= '0' && c <= '9'); };
    return !text.empty() && isLetter(text.front()) && std::ranges::all_of(text, isLetterOrDigit);
}

} // namespace fmi_import
