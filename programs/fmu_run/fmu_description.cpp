#include "fmu_run/model_information.h"

#include "platform/files.h"
#include "program_support/input_error.h"

#include <pugixml.hpp>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fmilib.h>
#include <memory>
#include <unordered_map>

namespace fmu_run {

namespace fs = std::filesystem;
using program_support::InputError;

namespace {

/// The library's import context together with the callbacks it points to.
class ImportContext {
  public:
    explicit ImportContext(LibraryMessages& messages) {
        callbacks_.malloc = std::malloc;
        callbacks_.calloc = std::calloc;
        callbacks_.realloc = std::realloc;
        callbacks_.free = std::free;
        callbacks_.logger = takeMessage;
        callbacks_.log_level = jm_log_level_error;
        callbacks_.context = &messages;
        context_ = fmi_import_allocate_context(&callbacks_);
        if (context_ == nullptr) {
            throw std::bad_alloc();
        }
    }

    ~ImportContext() { fmi_import_free_context(context_); }

    ImportContext(const ImportContext&) = delete;
    ImportContext& operator=(const ImportContext&) = delete;
    ImportContext(ImportContext&&) = delete;
    ImportContext& operator=(ImportContext&&) = delete;

    fmi_import_context_t* get() { return context_; }

  private:
    static void takeMessage(jm_callbacks* callbacks, jm_string /*module*/, jm_log_level_enu_t level,
                            jm_string message) {
        auto& messages = *static_cast<LibraryMessages*>(callbacks->context);
        std::string line = message;
        std::replace(line.begin(), line.end(), '\n', ' ');
        (level <= jm_log_level_fatal ? messages.errors : messages.warnings)
            .push_back(std::move(line));
    }

    jm_callbacks callbacks_{};
    fmi_import_context_t* context_ = nullptr;
};

struct FreeModel {
    void operator()(fmi2_import_t* model) const { fmi2_import_free(model); }
};

using Model = std::unique_ptr<fmi2_import_t, FreeModel>;

struct FreeVariableList {
    void operator()(fmi2_import_variable_list_t* list) const {
        fmi2_import_free_variable_list(list);
    }
};

using VariableList = std::unique_ptr<fmi2_import_variable_list_t, FreeVariableList>;

/// The word at `index`, "unknown" beyond the end.
template <std::size_t size>
std::string wordAt(const std::array<const char*, size>& words, int index) {
    const auto position = static_cast<std::size_t>(index);
    return position < size ? words[position] : "unknown";
}

std::string causalityOf(fmi2_import_variable_t* variable) {
    constexpr std::array words{"parameter", "calculatedParameter", "input", "output",
                               "local",     "independent"};
    return wordAt(words, fmi2_import_get_causality(variable));
}

std::string variabilityOf(fmi2_import_variable_t* variable) {
    constexpr std::array words{"constant", "fixed", "tunable", "discrete", "continuous"};
    return wordAt(words, fmi2_import_get_variability(variable));
}

VariableType typeOf(fmi2_import_variable_t* variable) {
    switch (fmi2_import_get_variable_base_type(variable)) {
    case fmi2_base_type_int:
        return VariableType::Integer;
    case fmi2_base_type_bool:
        return VariableType::Boolean;
    case fmi2_base_type_str:
        return VariableType::String;
    case fmi2_base_type_enum:
        return VariableType::Enumeration;
    default:
        return VariableType::Real;
    }
}

std::string unitOf(fmi2_import_variable_t* variable) {
    auto* real = fmi2_import_get_variable_as_real(variable);
    auto* unit = real == nullptr ? nullptr : fmi2_import_get_real_variable_unit(real);
    return unit == nullptr ? "" : fmi2_import_get_unit_name(unit);
}

/// What the FMI library does not offer, by variable name, from the model description itself.
class DescriptionTexts {
  public:
    explicit DescriptionTexts(const fs::path& modelDescription) {
        document_.load_file(modelDescription.c_str());
        for (const auto& node : root().child("ModelVariables").children("ScalarVariable")) {
            nodes_.emplace(node.attribute("name").value(), node);
        }
    }

    [[nodiscard]] std::string modelDescription() const {
        return root().attribute("description").value();
    }

    void complete(Variable& variable) const {
        const auto found = nodes_.find(variable.name);
        if (found == nodes_.end()) {
            return;
        }
        variable.description = found->second.attribute("description").value();
        const std::string type(typeName(variable.type));
        if (const auto start = found->second.child(type.c_str()).attribute("start")) {
            variable.start = start.value();
        }
    }

  private:
    [[nodiscard]] pugi::xml_node root() const { return document_.child("fmiModelDescription"); }

    pugi::xml_document document_;
    std::unordered_map<std::string, pugi::xml_node> nodes_;
};

std::vector<Variable> variablesOf(fmi2_import_t* model, const DescriptionTexts& texts) {
    const VariableList list(fmi2_import_get_variable_list(model, 0));
    std::vector<Variable> variables;
    for (std::size_t i = 0; i < fmi2_import_get_variable_list_size(list.get()); ++i) {
        auto* variable = fmi2_import_get_variable(list.get(), i);
        variables.push_back({fmi2_import_get_variable_name(variable), typeOf(variable),
                             causalityOf(variable), variabilityOf(variable), std::nullopt,
                             unitOf(variable), ""});
        texts.complete(variables.back());
    }
    return variables;
}

std::vector<std::string> platformsIn(const fs::path& unpackDirectory) {
    std::vector<std::string> platforms;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(unpackDirectory / "binaries", error)) {
        if (entry.is_directory(error)) {
            platforms.push_back(platform::narrowPath(entry.path().filename()));
        }
    }
    std::sort(platforms.begin(), platforms.end());
    return platforms;
}

std::string kindName(fmi2_fmu_kind_enu_t kind) {
    constexpr std::array words{"unknown", "Model Exchange", "Co-Simulation",
                               "Model Exchange and Co-Simulation"};
    return wordAt(words, kind);
}

DefaultExperiment defaultExperimentOf(fmi2_import_t* model) {
    return {fmi2_import_get_default_experiment_start(model),
            fmi2_import_get_default_experiment_stop(model),
            fmi2_import_get_default_experiment_step(model)};
}

std::string joined(const std::vector<std::string>& texts) {
    std::string result;
    for (const auto& text : texts) {
        result += (result.empty() ? "" : "; ") + text;
    }
    return result;
}

ModelInformation informationOf(ImportContext& context, const std::string& unpackDirectory,
                               const LibraryMessages& messages) {
    const Model model(fmi2_import_parse_xml(context.get(), unpackDirectory.c_str(), nullptr));
    if (!model) {
        throw InputError("its modelDescription.xml cannot be used: " + joined(messages.errors) +
                         "; ask the FMU's maker for a corrected one");
    }
    const auto directory = platform::nativePath(unpackDirectory);
    const DescriptionTexts texts(directory / "modelDescription.xml");
    const auto kind = fmi2_import_get_fmu_kind(model.get());
    ModelInformation information;
    information.modelName = fmi2_import_get_model_name(model.get());
    information.kind = kindName(kind);
    information.coSimulation = kind == fmi2_fmu_kind_cs || kind == fmi2_fmu_kind_me_and_cs;
    information.description = texts.modelDescription();
    information.generationTool = fmi2_import_get_generation_tool(model.get());
    information.guid = fmi2_import_get_GUID(model.get());
    information.platforms = platformsIn(directory);
    information.defaultExperiment = defaultExperimentOf(model.get());
    information.variables = variablesOf(model.get(), texts);
    return information;
}

void requireVersion2(fmi_version_enu_t version, const LibraryMessages& messages) {
    if (version == fmi_version_2_0_enu) {
        return;
    }
    if (version == fmi_version_1_enu) {
        throw InputError("it is made for FMI 1.0; export it for FMI 2.0");
    }
    if (messages.errors.empty()) {
        throw InputError("it is not made for FMI 2.0; export it for FMI 2.0");
    }
    throw InputError("it is no FMU of FMI 2.0: " + joined(messages.errors) +
                     "; check that the file is complete or export it anew");
}

} // namespace

std::string_view typeName(VariableType type) {
    constexpr std::array names{"Real", "Integer", "Boolean", "String", "Enumeration"};
    return names[static_cast<std::size_t>(type)];
}

const Variable* ModelInformation::find(std::string_view name) const {
    const auto found = std::find_if(variables.begin(), variables.end(),
                                    [&](const Variable& each) { return each.name == name; });
    return found == variables.end() ? nullptr : &*found;
}

ModelInformation readModelInformation(const std::string& unpackDirectory,
                                      LibraryMessages* messages) {
    LibraryMessages own;
    LibraryMessages& target = messages != nullptr ? *messages : own;
    ImportContext context(target);
    return informationOf(context, unpackDirectory, target);
}

ModelInformation unpackModel(const std::string& fmuPath, const std::string& unpackDirectory,
                             LibraryMessages* messages) {
    LibraryMessages own;
    LibraryMessages& target = messages != nullptr ? *messages : own;
    ImportContext context(target);
    try {
        requireVersion2(
            fmi_import_get_fmi_version(context.get(), fmuPath.c_str(), unpackDirectory.c_str()),
            target);
        return informationOf(context, unpackDirectory, target);
    } catch (const InputError& error) {
        throw InputError("cannot use '" + fmuPath + "': " + error.what());
    }
}

void requireFile(const std::string& fmuPath) {
    std::error_code error;
    if (!fs::is_regular_file(platform::nativePath(fmuPath), error)) {
        throw InputError("there is no file '" + fmuPath + "'; give the path of an FMU");
    }
}

} // namespace fmu_run
