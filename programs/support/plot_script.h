#pragma once

#include "programs/support/csv_table.h"

#include <string>
#include <vector>

namespace program_support {

/// One curve of a picture.
struct Curve {
    std::size_t column; ///< In the table.
    std::string name;
    std::string unit; ///< "-" for none.
};

/// The commands for gnuplot that draw `curves` of `table` into `imageFile`, data included, below
/// `title` unless that is empty. Names and title are data in it, whatever characters they are made of; `imageFile` is an absolute path without
/// line breaks, because gnuplot takes one that begins with "|" for a command.
std::string plotScript(const CsvTable& table, const std::vector<Curve>& curves,
                       const std::string& imageFile, const std::string& title = {});

} // namespace program_support
