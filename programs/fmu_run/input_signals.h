#pragma once

#include "programs/fmu_run/fmu_description.h"
#include "programs/fmu_run/variable_value.h"
#include "programs/support/csv_table.h"

#include <string>
#include <vector>

namespace fmu_run {

/// The signals of an input file, checked against the FMU: continuous Reals are interpolated
/// linearly, everything else holds its value until the next row.
class InputSignals {
  public:
    /// No signals.
    InputSignals() = default;

    /// Reads the file.
    ///
    /// @throws program_support::InputError naming file, line and column when it cannot be read, a
    ///         column is not an input or tunable parameter of the FMU, a value is not of its
    ///         type, or is a Boolean in whose place another would be set (SharedReferences, which
    ///         `quiet` is for).
    InputSignals(const std::string& path, const FmuDescription& model, bool quiet);

    /// Sets every signal to its value at `time`, in seconds.
    ///
    /// @throws RunFailure when the FMU refuses.
    void apply(FmiToolsInstance* fmu, double time) const;

  private:
    struct Signal {
        const Variable* variable; ///< Only while the file is read.
        std::string name;
        std::size_t column;
        bool interpolated;
        std::vector<VariableValue> rows; ///< Of a signal that is held: its value by row.
    };

    [[nodiscard]] std::string placeOf(std::size_t column) const;
    [[nodiscard]] Signal signalOf(const Variable& variable, std::size_t column) const;
    void readHeldValues();

    program_support::CsvTable table_;
    std::vector<Signal> signals_;
};

} // namespace fmu_run
