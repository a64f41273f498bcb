#pragma once

#include "fmu_run/model_information.h"
#include "fmu_run/variable_value.h"
#include "program_support/csv_table.h"

#include <string>
#include <vector>

namespace fmu_run {

/// The signals of an input file, checked against the FMU: continuous Reals are interpolated
/// linearly, everything else holds its value until the next row.
class InputSignals {
  public:
    /// No signals.
    InputSignals() = default;

    /// Reads the file. Throws InputError, naming file, line and column, when it cannot be read, a
    /// column is not an input or tunable parameter of the FMU, or a value is not of its type.
    InputSignals(const std::string& path, const ModelInformation& model);

    /// Sets every signal to its value at `time`, in seconds. Throws RunFailure when the FMU
    /// refuses.
    void apply(FmiToolsInstance* fmu, double time) const;

  private:
    struct Signal {
        std::string name;
        std::size_t column;
        bool interpolated;
        std::vector<VariableValue> rows; ///< Of a signal that is held: its value by row.
    };

    [[nodiscard]] Signal signalOf(const ModelInformation& model, std::size_t column) const;
    [[nodiscard]] std::vector<VariableValue> heldValues(const Variable& variable,
                                                        std::size_t column) const;

    program_support::CsvTable table_;
    std::vector<Signal> signals_;
};

} // namespace fmu_run
