#include "programs/fmu_run/fmu_description.h"

#include "platform/files.h"
#include "programs/fmu_run/fmu_archive.h"
#include "programs/fmu_run/run_directory.h"
#include "programs/support/input_error.h"
#include "programs/support/input_files.h"
#include "programs/support/joined.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <system_error>
#include <utility>

namespace fmu_run {

namespace fs = std::filesystem;
using program_support::InputError;
using program_support::joined;

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
        auto& kept = level <= jm_log_level_fatal ? messages.errors : messages.warnings;
        constexpr std::size_t mostKept = 1000; // A crafted file can cause one by every fourth byte.
        if (kept.size() == mostKept) {
            ++messages.dropped;
            return;
        }
        std::string line = message;
        std::replace(line.begin(), line.end(), '\n', ' ');
        kept.push_back(std::move(line));
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

/// What the FMI library answers where there is no text is "" or null.
std::string textOrNone(const char* text) {
    return text != nullptr ? text : "";
}

std::optional<VariableValue> startOf(fmi2_import_variable_t* variable) {
    // A library may hold a start value for required, and so for given, where none is allowed.
    if (fmi2_import_get_causality(variable) == fmi2_causality_enu_independent ||
        fmi2_import_get_variable_has_start(variable) == 0) {
        return std::nullopt;
    }
    switch (fmi2_import_get_variable_base_type(variable)) {
    case fmi2_base_type_real:
        return fmi2_import_get_real_variable_start(fmi2_import_get_variable_as_real(variable));
    case fmi2_base_type_int:
        return fmi2_import_get_integer_variable_start(
            fmi2_import_get_variable_as_integer(variable));
    case fmi2_base_type_bool:
        return fmi2_import_get_boolean_variable_start(
            fmi2_import_get_variable_as_boolean(variable));
    case fmi2_base_type_enum:
        return fmi2_import_get_enum_variable_start(fmi2_import_get_variable_as_enum(variable));
    case fmi2_base_type_str:
        break;
    }
    return textOrNone(
        fmi2_import_get_string_variable_start(fmi2_import_get_variable_as_string(variable)));
}

std::string unitOf(fmi2_import_variable_t* variable) {
    auto* real = fmi2_import_get_variable_as_real(variable);
    auto* unit = real == nullptr ? nullptr : fmi2_import_get_real_variable_unit(real);
    return unit == nullptr ? "" : fmi2_import_get_unit_name(unit);
}

std::vector<Variable> variablesOf(fmi2_import_t* model) {
    const VariableList list(fmi2_import_get_variable_list(model, 0));
    std::vector<Variable> variables;
    for (std::size_t i = 0; i < fmi2_import_get_variable_list_size(list.get()); ++i) {
        auto* variable = fmi2_import_get_variable(list.get(), i);
        variables.push_back(
            {fmi2_import_get_variable_name(variable), fmi2_import_get_variable_base_type(variable),
             fmi2_import_get_causality(variable), fmi2_import_get_variability(variable),
             startOf(variable), unitOf(variable),
             textOrNone(fmi2_import_get_variable_description(variable)),
             fmi2_import_get_variable_vr(variable)});
    }
    return variables;
}

bool hasLibrary(const fs::path& folder) {
    std::error_code error;
    const fs::directory_iterator files(folder, error);
    return !error && std::any_of(begin(files), end(files), [](const auto& file) {
        return isLibraryName(platform::narrowPath(file.path().filename()));
    });
}

std::vector<std::string> platformsIn(const fs::path& unpackDirectory) {
    std::vector<std::string> platforms;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(unpackDirectory / "binaries", error)) {
        if (hasLibrary(entry.path())) {
            platforms.push_back(platform::narrowPath(entry.path().filename()));
        }
    }
    std::sort(platforms.begin(), platforms.end());
    return platforms;
}

std::string kindName(fmi2_fmu_kind_enu_t kind) {
    constexpr std::array names{"unknown", "Model Exchange", "Co-Simulation",
                               "Model Exchange and Co-Simulation"};
    return names.at(kind);
}

DefaultExperiment defaultExperimentOf(fmi2_import_t* model) {
    return {fmi2_import_get_default_experiment_start(model),
            fmi2_import_get_default_experiment_stop(model),
            fmi2_import_get_default_experiment_step(model)};
}

FmuDescription descriptionIn(const std::string& unpackDirectory, ImportContext& context,
                             const LibraryMessages& messages) {
    const Model model(fmi2_import_parse_xml(context.get(), unpackDirectory.c_str(), nullptr));
    if (!model) {
        throw InputError(
            "its modelDescription.xml cannot be used: " + joined(messages.errors, "; ") +
            "; ask the FMU's maker for a corrected one");
    }
    const auto kind = fmi2_import_get_fmu_kind(model.get());
    FmuDescription description;
    description.modelName = fmi2_import_get_model_name(model.get());
    description.kind = kindName(kind);
    description.coSimulation = kind == fmi2_fmu_kind_cs || kind == fmi2_fmu_kind_me_and_cs;
    description.description = textOrNone(fmi2_import_get_description(model.get()));
    description.generationTool = fmi2_import_get_generation_tool(model.get());
    description.guid = fmi2_import_get_GUID(model.get());
    description.platforms = platformsIn(platform::nativePath(unpackDirectory));
    description.defaultExperiment = defaultExperimentOf(model.get());
    description.variables = variablesOf(model.get());
    return description;
}

void requireVersion2(fmi_version_enu_t version, const LibraryMessages& messages) {
    if (version == fmi_version_2_0_enu) {
        return;
    }
    if (version == fmi_version_1_enu || version == fmi_version_3_0_enu) {
        throw InputError("it is made for FMI " +
                         std::string(version == fmi_version_1_enu ? "1.0" : "3.0") +
                         "; export it for FMI 2.0");
    }
    if (messages.errors.empty()) {
        throw InputError("it is not made for FMI 2.0; export it for FMI 2.0");
    }
    // What cannot be unpacked is refused for its own reason, which comes with a remedy.
    auto errors = messages.errors;
    const auto isOfUnpacking = [](const std::string& error) {
        return error.starts_with("Unpacking of FMU ");
    };
    if (std::erase_if(errors, isOfUnpacking) > 0 && !errors.empty()) {
        throw InputError(joined(errors, "; "));
    }
    throw InputError("it is no FMU of FMI 2.0: " + joined(messages.errors, "; ") +
                     "; check that the file is complete or export it anew");
}

FmuDescription descriptionFrom(const std::string& archive, const std::string& unpackDirectory,
                               LibraryMessages* messages) {
    LibraryMessages own;
    LibraryMessages& target = messages != nullptr ? *messages : own;
    ImportContext context(target);
    requireVersion2(
        fmi_import_get_fmi_version(context.get(), archive.c_str(), unpackDirectory.c_str()),
        target);
    return descriptionIn(unpackDirectory, context, target);
}

} // namespace

std::string startText(const Variable& variable) {
    if (variable.type == fmi2_base_type_bool) {
        return std::get<std::int32_t>(*variable.start) != 0 ? "true" : "false";
    }
    return textOf(*variable.start);
}

FmuDescription describeFmu(const std::string& fmuPath) {
    program_support::requireArchive(fmuPath);
    const RunDirectory directory;
    const auto copy = directory.temporaryFile("description.fmu");
    try {
        const auto content =
            copyModelDescription(platform::nativePath(fmuPath), platform::nativePath(copy));
        // What cannot be listed cannot be unpacked either: the library says why.
        auto description = descriptionFrom(content.isReadable ? copy : fmuPath,
                                           directory.unpackDirectory(), nullptr);
        description.platforms = content.platforms;
        return description;
    } catch (const InputError& error) {
        throw InputError("cannot use '" + fmuPath + "': " + error.what());
    }
}

FmuDescription unpackFmu(const std::string& fmuPath, const std::string& unpackDirectory,
                         LibraryMessages* messages) {
    program_support::requireArchive(fmuPath);
    try {
        return descriptionFrom(fmuPath, unpackDirectory, messages);
    } catch (const InputError& error) {
        throw InputError("cannot use '" + fmuPath + "': " + error.what());
    }
}

} // namespace fmu_run
