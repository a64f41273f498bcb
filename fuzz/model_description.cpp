/// Model descriptions: parsed or refused, and everything of a parsed one can be asked.
#include "fuzz/fmi_library.h"
#include "platform/temporary_directory.h"

#include <cstring>

namespace {

struct FreeFmu {
    void operator()(fmi2_import_t* fmu) const { fmi2_import_free(fmu); }
};

void use(const char* text) {
    fuzz::require(text == nullptr || std::strlen(text) < (std::size_t{1} << 20U),
                  "a text is a text");
}

void askReal(fmi2_import_variable_t* variable) {
    fmi2_import_real_variable_t* real = fmi2_import_get_variable_as_real(variable);
    fmi2_import_unit_t* unit = fmi2_import_get_real_variable_unit(real);
    if (unit != nullptr) {
        use(fmi2_import_get_unit_name(unit));
    }
    if (fmi2_import_get_variable_has_start(variable) != 0) {
        static_cast<void>(fmi2_import_get_real_variable_start(real));
    }
}

void ask(fmi2_import_t* fmu, fmi2_import_variable_t* variable) {
    const char* name = fmi2_import_get_variable_name(variable);
    use(name);
    use(fmi2_import_get_variable_description(variable));
    static_cast<void>(fmi2_import_get_causality(variable));
    static_cast<void>(fmi2_import_get_variability(variable));
    static_cast<void>(fmi2_import_get_initial(variable));
    static_cast<void>(fmi2_import_get_variable_vr(variable));
    switch (fmi2_import_get_variable_base_type(variable)) {
    case fmi2_base_type_real:
        askReal(variable);
        break;
    case fmi2_base_type_str:
        use(fmi2_import_get_string_variable_start(fmi2_import_get_variable_as_string(variable)));
        break;
    default:
        break;
    }
    fmi2_import_variable_t* found = fmi2_import_get_variable_by_name(fmu, name);
    const bool isFound =
        found != nullptr && std::strcmp(fmi2_import_get_variable_name(found), name) == 0;
    fuzz::require(isFound || *name == '\0', "a variable is found by its name, if it has one");
}

void ask(fmi2_import_t* fmu) {
    use(fmi2_import_get_model_name(fmu));
    use(fmi2_import_get_generation_tool(fmu));
    static_cast<void>(fmi2_import_get_fmu_kind(fmu));
    static_cast<void>(fmi2_import_get_default_experiment_step(fmu));
    for (const int order : {0, 1, 2}) {
        fmi2_import_variable_list_t* list = fmi2_import_get_variable_list(fmu, order);
        const std::size_t size = fmi2_import_get_variable_list_size(list);
        for (std::size_t index = 0; index < size; ++index) {
            ask(fmu, fmi2_import_get_variable(list, index));
        }
        fmi2_import_free_variable_list(list);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const platform::TemporaryDirectory scratch("fuzz_");
    fuzz::writeFile(scratch / "modelDescription.xml", fuzz::Bytes(data, size).takeRest());
    const auto directory = scratch.path().string();
    const fuzz::Context context = fuzz::silentContext();
    static_cast<void>(fmi_import_get_fmi_version(context.get(), nullptr, directory.c_str()));
    const std::unique_ptr<fmi2_import_t, FreeFmu> fmu(
        fmi2_import_parse_xml(context.get(), directory.c_str(), nullptr));
    if (fmu != nullptr) {
        ask(fmu.get());
    }
    return 0;
}
