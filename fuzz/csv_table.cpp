/// The input files of the programs: a table or an InputError, and what a table holds can be asked.
#include "programs/support/csv_table.h"

#include "fuzz/fuzz_support.h"
#include "platform/temporary_directory.h"
#include "programs/support/input_error.h"

#include <cmath>

namespace {

using program_support::CsvTable;

void ask(const CsvTable& table, std::size_t column) {
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
        static_cast<void>(table.text(row, column));
    }
    table.requireNumbers(column);
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
        const double t = table.time(row);
        const double later = table.interpolateLinearly(column, t + 0.5);
        fuzz::require(std::isfinite(table.value(table.rowAt(t), column)) && !std::isnan(later),
                      "numbers lead to numbers");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const platform::TemporaryDirectory scratch("fuzz_");
    const auto file = scratch / "input.csv";
    fuzz::writeFile(file, fuzz::Bytes(data, size).takeRest());
    try {
        const auto table = CsvTable::read(file.string());
        for (std::size_t column = 0; column < table.names().size(); ++column) {
            ask(table, column);
        }
    } catch (const program_support::InputError& error) {
        const std::string_view message = error.what();
        fuzz::require(message.find("input.csv") != std::string_view::npos,
                      "an error names the file");
    }
    return 0;
}
