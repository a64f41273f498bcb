#include "fmi_import/c_border.h"
#include "fmi_import/fmu.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

struct fmi2_import_variable_list_t {
    std::vector<fmi2_import_variable_t*> variables;
};

namespace {

enum SortOrder { asInModelDescription = 0, byName = 1, byReference = 2 };

std::vector<fmi2_import_variable_t*> sorted(fmi_import::ModelDescription& description,
                                            int sortOrder) {
    std::vector<fmi2_import_variable_t*> result;
    result.reserve(description.variables.size());
    if (sortOrder == byReference) {
        for (const std::uint32_t position : description.referenceOrder) {
            result.push_back(&description.variables[position]);
        }
        return result;
    }
    for (fmi2_import_variable_t& variable : description.variables) {
        result.push_back(&variable);
    }
    if (sortOrder == byName) {
        std::ranges::stable_sort(result, {}, [](const fmi2_import_variable_t* variable) {
            return std::string_view(variable->name);
        });
    }
    return result;
}

} // namespace

fmi2_import_variable_list_t* fmi2_import_get_variable_list(fmi2_import_t* fmu, int sortOrder) {
    if (fmu == nullptr || sortOrder < asInModelDescription || sortOrder > byReference ||
        (!fmu->description.hasVariableList && sortOrder != byName)) {
        return nullptr;
    }
    return fmi_import::guarded<fmi2_import_variable_list_t*>(nullptr, [&] {
        return new fmi2_import_variable_list_t{sorted(fmu->description, sortOrder)};
    });
}

size_t fmi2_import_get_variable_list_size(fmi2_import_variable_list_t* vl) {
    return vl != nullptr ? vl->variables.size() : 0;
}

fmi2_import_variable_t* fmi2_import_get_variable(fmi2_import_variable_list_t* vl, size_t index) {
    return index < fmi2_import_get_variable_list_size(vl) ? vl->variables[index] : nullptr;
}

void fmi2_import_free_variable_list(fmi2_import_variable_list_t* vl) {
    delete vl;
}

fmi2_import_variable_t* fmi2_import_get_variable_by_name(fmi2_import_t* fmu, const char* name) {
    if (fmu == nullptr || name == nullptr || *name == '\0') {
        return nullptr;
    }
    const std::uint32_t position = fmu->description.find(name);
    return position != fmi_import::NameIndex::notFound ? &fmu->description.variables[position]
                                                       : nullptr;
}
