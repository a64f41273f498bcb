#include "fmu_runtime/results_file.h"

#include "fmu_runtime/instance.h"
#include "fmu_runtime/number_text.h"

#include <cstdio>
#include <memory>
#include <new>
#include <string_view>

namespace fmu_runtime {

namespace {

struct FreeVariableList {
    void operator()(fmi2_import_variable_list_t* list) const {
        fmi2_import_free_variable_list(list);
    }
};

using VariableList = std::unique_ptr<fmi2_import_variable_list_t, FreeVariableList>;

constexpr int modelDescriptionOrder = 0;
constexpr int nameOrder = 1;

VariableList listVariables(fmi2_import_t* fmu, int order) {
    return VariableList(fmi2_import_get_variable_list(fmu, order));
}

/// All variables in the order of the model description. FMI Library answers null when memory runs
/// out, but also when the model description has no list; only then it has none by name either.
VariableList modelVariables(fmi2_import_t* fmu) {
    VariableList variables = listVariables(fmu, modelDescriptionOrder);
    if (variables == nullptr) {
        const VariableList byName = listVariables(fmu, nameOrder);
        if (byName == nullptr || fmi2_import_get_variable_list_size(byName.get()) > 0) {
            throw std::bad_alloc();
        }
    }
    return variables;
}

bool isColumn(fmi2_import_variable_t* variable, bool includeAllVariables) {
    const bool isLocal = fmi2_import_get_causality(variable) == fmi2_causality_enu_local;
    return (includeAllVariables || !isLocal) &&
           fmi2_import_get_variable_base_type(variable) == fmi2_base_type_real;
}

const char* unitName(fmi2_import_variable_t* variable) {
    fmi2_import_unit_t* unit =
        fmi2_import_get_real_variable_unit(fmi2_import_get_variable_as_real(variable));
    return unit != nullptr ? fmi2_import_get_unit_name(unit) : "-";
}

struct Columns {
    std::vector<fmi2_value_reference_t> references;
    std::string header = "time[s]";
};

Columns collectColumns(fmi2_import_t* fmu, bool includeAllVariables) {
    const VariableList variables = modelVariables(fmu);
    const std::size_t size = fmi2_import_get_variable_list_size(variables.get());
    Columns columns;
    for (std::size_t index = 0; index < size; ++index) {
        fmi2_import_variable_t* variable = fmi2_import_get_variable(variables.get(), index);
        if (isColumn(variable, includeAllVariables)) {
            columns.references.push_back(fmi2_import_get_variable_vr(variable));
            columns.header.append(1, ',').append(fmi2_import_get_variable_name(variable));
            columns.header.append(1, '[').append(unitName(variable)).append(1, ']');
        }
    }
    columns.header += '\n';
    return columns;
}

bool write(FmiToolsInstance& instance, std::string_view text) {
    OutputFileRecord& output = instance.results.output;
    const bool written = output.write(text);
    if (!written && output.isNewFailure()) {
        logRuntime(&instance, levels::error, output.failure());
        if (instance.log->output.hasFailed()) { // The log shares the full disk.
            std::fprintf(stderr, "%.*s\n", static_cast<int>(output.failure().text().size()),
                         output.failure().text().data());
        }
    }
    return written;
}

/// Opens the file and writes the header. A file that does not open is left closed: no rows will
/// follow. What can fail comes first, so that a failure leaves earlier columns and their row buffer
/// as they were.
std::int32_t writeResultsHeader(FmiToolsInstance& instance, const char* path,
                                bool includeAllVariables) {
    ResultsFile& results = instance.results;
    Columns columns = collectColumns(instance.slave.fmu(), includeAllVariables);
    std::vector<char> row((columns.references.size() + 1) * (realTextSize + 1));
    const bool isFree = results.output.open(path);
    results.includeAllVariables = includeAllVariables;
    results.columns.swap(columns.references);
    results.row.swap(row);
    if (results.output.isOpen()) {
        static_cast<void>(write(instance, columns.header)); // The rows will fail, too.
    }
    return isFree ? success : fileTaken;
}

/// Composes the row in the instance's buffer; `end` receives where it ends. False when a value
/// could not be read.
bool composeRow(FmiToolsInstance& instance, char*& end) {
    end = writeReal(instance.results.row.data(), instance.currentTime);
    for (const auto reference : instance.results.columns) {
        *end++ = ',';
        double value = 0.0;
        if (instance.slave.get(reference, value) != fmi2_status_ok) {
            return false;
        }
        end = writeReal(end, value);
    }
    *end++ = '\n';
    return true;
}

} // namespace

std::int32_t writeResultsRow(FmiToolsInstance& instance) noexcept {
    if (!instance.results.output.isOpen()) {
        return success;
    }
    return guarded<std::int32_t>(variableAccessFailed, [&] {
        char* end = nullptr;
        const bool complete = composeRow(instance, end);
        const char* begin = instance.results.row.data();
        const bool written = write(instance, {begin, static_cast<std::size_t>(end - begin)});
        return complete && written ? success : variableAccessFailed;
    });
}

std::int32_t openResultsFile(FmiToolsInstance& instance, const char* path) noexcept {
    const auto result = guarded<std::int32_t>(
        notAvailable, [&] { return writeResultsHeader(instance, path, false); });
    if (result == notAvailable) {
        logRuntime(&instance, levels::error, "Failed to setup results logging");
    }
    return result;
}

} // namespace fmu_runtime

using namespace fmu_runtime;

std::int32_t fmiToolsSetResultsFile(FmiToolsInstance* instance, const char* path) {
    if (instance == nullptr) {
        return notAvailable;
    }
    const std::int32_t result = openResultsFile(*instance, path);
    if (result == fileTaken) {
        logRuntime(instance, levels::error, instance->results.output.refusal());
        return success;
    }
    return result;
}
