#pragma once

#include "programs/cosim_host/host_model.h"
#include "programs/cosim_host/vector_slots.h"
#include "programs/support/csv_table.h"
#include "reference_host/simulation.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace cosim_host {

/// An output result as the user asked for it.
struct OutputRequest {
    std::string name;
    std::string quantity;
    int size = 1;
};

/// A host without equations of its own: the coupled conditions follow a table over time, on
/// straight lines between its rows, and the output results are only looked at.
class InputSignals : public HostModel {
  public:
    /// Adds a coupled condition to `simulation` for each column of `table`, and the output results.
    /// Where `arrays` is true, the columns F[1], F[2] and F[3] become one condition F of three
    /// components.
    ///
    /// @throws program_support::InputError when a cell is no number.
    InputSignals(reference_host::Simulation& simulation,
                 std::optional<program_support::CsvTable> table,
                 const std::vector<OutputRequest>& outputs, bool arrays);

    void impose(double time) override;
    void advance(double from, double to) override;
    [[nodiscard]] std::vector<Signal> signals() const override;

  private:
    struct Column {
        std::size_t index;
        Slot slot;
    };

    void addConditions(reference_host::Simulation& simulation, bool arrays);
    bool addVector(reference_host::Simulation& simulation, std::size_t firstColumn);

    std::optional<program_support::CsvTable> table_;
    std::vector<Column> columns_;
    std::vector<Signal> signals_;
};

} // namespace cosim_host
