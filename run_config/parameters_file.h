#pragma once

#include "run_config/fmi_solver_options.h"

#include <string>

namespace run_config {

/// Reads an FMU parameters file into `parameters`, replacing values of the same name:
///
///     <FMUSettings Version="1.0">
///       <Parameters>
///         <Parameter Name="stiffness" Type="Real">2.1e5</Parameter>
///       </Parameters>
///     </FMUSettings>
///
/// The type is "Real", "Integer", "String" or "Boolean"; it only admits the entry, the value is
/// kept as the text it is, blanks included. Entries of other types are skipped with a line on
/// standard output; whatever else the file holds is ignored.
///
/// @param path       the file, a narrow path in the code page of the process
/// @param parameters receives the entries; untouched on failure
/// @return true when the file was read, even when it held no parameter; false, after a line on
///         standard output, when it is not well-formed XML or not of version 1.0
/// @throws std::bad_alloc when memory runs out while a message is composed
bool readParametersFile(const std::string& path, FmuParameterMap& parameters);

} // namespace run_config
