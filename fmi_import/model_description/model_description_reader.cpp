#include "fmi_import/model_description/model_description_reader.h"

#include "fmi_import/model_description/number_text.h"
#include "fmi_import/model_description/reference_order.h"
#include "fmi_import/model_description/unit_reader.h"
#include "fmi_import/model_description/variable_reader.h"
#include "fmi_import/model_description/xml_report.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

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

/// The first is the identifier; of the third and the last three, in this order, Capabilities is
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

/// Fills a ModelDescription from its document.
class Reader {
  public:
    Reader(const XmlReport& report, ModelDescription& description, bool checkNames)
        : report_(report),
          description_(description),
          units_(report, description),
          checkNames_(checkNames) {}

    void read(const XmlElement& root) {
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
        void (Reader::*read)(const XmlElement&);
    };

    /// Children of the root and of ModelStructure, in the order that section 2.2.1 and 2.2.8 have.
    static const std::array<ChildRule, 9> rootChildren;
    static const std::array<ChildRule, 4> structureChildren;

    /// Reads children that may come once each and in this order only.
    void readChildren(const XmlElement& parent, std::span<const ChildRule> rules) {
        const ChildRule* last = nullptr;
        for (XmlElement child; report_.xml().nextChild(parent, child);) {
            const ChildRule* rule = ruleFor(child, rules);
            if (rule == nullptr) {
                report_.skipUnknown(child);
            } else if (rule == last) {
                report_.skip(child, "Multiple instances of XML element '" +
                                        std::string(child.name) + "' are not allowed, skipping");
            } else if (last != nullptr && rule < last) {
                report_.skipMisplaced(child, last->name);
            } else {
                last = rule;
                readChild(child, *rule);
            }
        }
    }

    static const ChildRule* ruleFor(const XmlElement& child, std::span<const ChildRule> rules) {
        for (const ChildRule& rule : rules) {
            if (isSame(child.name, rule.name)) {
                return &rule;
            }
        }
        return nullptr;
    }

    void readChild(const XmlElement& child, const ChildRule& rule) {
        if (rule.isAnnounced) {
            report_.progress(rule.name);
        }
        (this->*rule.read)(child);
    }

    /// False when the rest of the document is not to be read.
    bool readRoot(const XmlElement& root) {
        std::array<const char*, rootAttributes.size()> values{};
        readAttributes(report_, root, rootAttributes, values);
        const auto& [fmiVersion, modelName, guid, description, tool, naming, author, version,
                     copyright, license, date, eventIndicators] = values;
        for (std::size_t required = 0; required < 3; ++required) {
            if (values[required] == nullptr) {
                report_.abortMissing(root, root.name, rootAttributes[required]);
            }
        }
        description_.modelName = orEmpty(modelName);
        description_.guid = orEmpty(guid);
        description_.description = orEmpty(description);
        description_.generationTool = orEmpty(tool);
        const std::string_view convention = naming != nullptr ? naming : "flat";
        if (convention != "flat" && convention != "structured") {
            report_.recoverFromValue(root, "enumeration", "variableNamingConvention", convention);
            return false;
        }
        return true;
    }

    /// Reads what both interface elements have; the identifier.
    const char* readInterface(const XmlElement& element, Capabilities& capabilities) {
        std::array<const char*, interfaceAttributes.size()> values{};
        readAttributes(report_, element, interfaceAttributes, values);
        if (values.front() == nullptr) {
            report_.abortMissing(element, element.name, interfaceAttributes.front());
        }
        if (!isCIdentifier(values.front())) {
            report_.recover(element, "Model identifier '" + std::string(values.front()) +
                                         "' is not valid (must be a valid C-identifier)");
        }
        std::array<bool, interfaceAttributes.size()> flags{};
        for (std::size_t at = 1; at < values.size(); ++at) {
            flags[at] = readFlag(element, interfaceAttributes[at], values[at]);
        }
        capabilities = {flags[2], flags[9], flags[10], flags[11]};
        return orEmpty(values.front());
    }

    bool readFlag(const XmlElement& element, const char* name, const char* text) {
        if (text == nullptr || std::strcmp(name, "maxOutputDerivativeOrder") == 0) {
            return false;
        }
        const auto value = booleanFromText(text);
        if (!value) {
            report_.recoverFromValue(element, "enumeration", name, text);
        }
        return value.value_or(false);
    }

    void readModelExchange(const XmlElement& element) {
        Capabilities ignored;
        description_.modelExchangeIdentifier = readInterface(element, ignored);
        description_.kind |= fmi2_fmu_kind_me;
    }

    void readCoSimulation(const XmlElement& element) {
        description_.coSimulationIdentifier = readInterface(element, description_.capabilities);
        description_.kind |= fmi2_fmu_kind_cs;
    }

    void readUnits(const XmlElement& element) { units_.readUnits(element); }

    void readTypes(const XmlElement& element) { units_.readTypes(element); }

    void readLogCategories(const XmlElement& element) {
        for (XmlElement child; report_.xml().nextChild(element, child);) {
            if (isSame(child.name, "Category") && child.attribute("name") == nullptr) {
                report_.abortMissing(child, "Category", "name");
            }
        }
    }

    /// A value that cannot be read ends the reading of the element: it and those after it keep
    /// their defaults.
    void readDefaultExperiment(const XmlElement& element) {
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

    void ignore(const XmlElement&) {}

    void readVariables(const XmlElement& element) {
        VariableReader reader(report_, description_, units_);
        for (XmlElement child; report_.xml().nextChild(element, child);) {
            if (isSame(child.name, "ScalarVariable")) {
                reader.read(child);
            } else {
                report_.skipUnknown(child);
            }
        }
        count_ = reader.finish();
        description_.hasVariableList = true;
        sortByReference(description_);
        if (description_.variables.size() > 1) {
            report_.log().verbose(module::modelDescription, {"Building alias index"});
            resolveAliases(report_, description_);
        }
        indexNames();
    }

    /// Of variables that share a name the first is found by it.
    void indexNames() {
        const auto& variables = description_.variables;
        description_.names.reserve(variables.size());
        for (std::uint32_t at = 0; at < variables.size(); ++at) {
            const std::string_view name = variables[at].name;
            if (description_.find(name) == NameIndex::notFound) {
                if (!description_.names.insert(name, at)) {
                    report_.abort("The names of the variables were made up to slow down look-ups");
                }
            } else if (checkNames_) {
                report_.error(
                    {"Two variables with the same name ", name, " found. This is not allowed."});
            }
        }
    }

    void readStructure(const XmlElement& element) {
        hasStructure_ = true;
        readChildren(element, structureChildren);
    }

    void readUnknowns(const XmlElement& element) {
        for (XmlElement child; report_.xml().nextChild(element, child);) {
            if (isSame(child.name, "Unknown")) {
                checkUnknown(child);
            }
        }
    }

    void checkUnknown(const XmlElement& unknown) {
        const char* index = unknown.attribute("index");
        if (index == nullptr) {
            report_.abortMissing(unknown, "Unknown", "index");
        }
        const auto number = unsignedFromText(index);
        if (!number || *number == 0 || *number > count_) {
            report_.error({"The index attribute must have a value between 1 and the number of "
                           "model variables."});
            report_.abort(unknown, "Model structure is not valid due to detected errors. Cannot "
                                   "continue.");
        }
    }

    void finish(const XmlElement& root) {
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
bool readDocument(const Log& log, FileText bytes, ModelDescription& description, bool checkNames) {
    try {
        FileText text = asUtf8(std::move(bytes), true);
        XmlReader xml(text);
        description.text = std::move(text);
        const XmlReport report(log, xml);
        Reader(report, description, checkNames).read(xml.root());
        xml.finish();
        return true;
    } catch (const XmlFault& fault) {
        reportParseError(log, module::modelDescription, fault.line, fault.reason);
    } catch (const ParseAborted&) {
        // What there was to say has been logged.
    }
    return false;
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
    const bool read = readDocument(log, std::move(*text), description, checkNames);
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
