#pragma once

#include "fmi_tools.h"
#include "platform/output_file.h"

#include <cstdint>
#include <fmilib.h>
#include <string>
#include <vector>

namespace fmu_runtime {

/// The results file of an instance: which variables are its columns, and the row being composed.
struct ResultsFile {
    platform::OutputFile file;
    std::string path;
    bool failureReported = false;     ///< That the file cannot be written is said once.
    bool includeAllVariables = false; ///< False leaves out the variables of causality local.
    std::vector<fmi2_value_reference_t> columns; ///< In the order of the model description.
    std::vector<char> row; ///< As large as the longest row, so that a step allocates nothing.
    std::vector<platform::OutputFile>
        earlier; ///< Files that a later one replaced, closed at the end.
};

/// Appends a row of the current time and every column to the results file.
///
/// @return 0, also when there is no results file; -202 when a value could not be read: the row then
/// ends
///         before it, without its line end.
std::int32_t writeResultsRow(FmiToolsInstance& instance) noexcept;

} // namespace fmu_runtime
