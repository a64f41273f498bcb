#pragma once

#include "programs/support/csv_table.h"
#include "support/files.h"
#include "support/run_program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

namespace cosim_host_test {

using Arguments = std::vector<std::string>;

/// Runs cosim_host in a directory of its own.
class CosimHostRun : public testing::Test {
  protected:
    [[nodiscard]] test_support::ProgramResult run(const Arguments& arguments,
                                                  test_support::RunOptions options = {}) const {
        options.workingDirectory = directory.path();
        return test_support::runProgram(test_support::programPath("cosim_host"), arguments,
                                        options);
    }

    /// A file that a run left.
    [[nodiscard]] program_support::CsvTable table(const std::string& name) const {
        return program_support::CsvTable::read(test_support::narrow(directory / name));
    }

    test_support::TemporaryDirectory directory{"a run"};
};

/// Path of the tyre FMU as solvers' command lines take it.
inline std::string quotedTyre() {
    std::string text = "\"";
    text += test_support::narrow(test_support::fmuPath("tyre"));
    return text += '"';
}

/// The number in the column `name`; NAN, with a failure, when there is no such column.
inline double valueAt(const program_support::CsvTable& table, std::size_t row,
                      const std::string& name) {
    const auto& names = table.names();
    const auto found = std::find(names.begin(), names.end(), name);
    EXPECT_NE(found, names.end()) << name;
    return found == names.end() ? NAN
                                : table.value(row, static_cast<std::size_t>(found - names.begin()));
}

} // namespace cosim_host_test
