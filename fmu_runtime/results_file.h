#pragma once

#include "fmi_tools.h"
#include "fmu_runtime/output_file_record.h"

#include <cstdint>
#include <fmilib.h>
#include <vector>

namespace fmu_runtime {

/// The results file of an instance: which variables are its columns, and the row being composed.
struct ResultsFile {
    OutputFileRecord output{"results file"};
    bool includeAllVariables = false; ///< False leaves out the variables of causality local.
    std::vector<fmi2_value_reference_t> columns; ///< In the order of the model description.
    std::vector<char> row; ///< As large as the longest row, so that a step allocates nothing.
};

/// As fmiToolsSetResultsFile(), without a line about a file that somebody else has.
///
/// @return success; notAvailable as there; fileTaken with no results file set
std::int32_t openResultsFile(FmiToolsInstance& instance, const char* path) noexcept;

/// Appends a row of the current time and every column to the results file.
///
/// @return 0, also when there is no results file; -202 when a value could not be read, and the row
///         ends before it, without its line end; or when the row could not be written, and is left
///         out.
std::int32_t writeResultsRow(FmiToolsInstance& instance) noexcept;

} // namespace fmu_runtime
