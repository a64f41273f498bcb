#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace program_support {

/// A comma-separated file of signals over time: a header line of names, the first of which is the
/// time's, then one line a time. Blank lines do not count.
///
/// A cell may stand in double quotes, with "" for a quote inside. Lines end with LF or CR LF; a
/// byte order mark is skipped. Names are taken as they stand, so "F[1]" is a name like any other.
class CsvTable {
  public:
    /// Reads the whole file.
    ///
    /// @throws InputError naming the file, and line and column where there is one, when it cannot be
    ///         read, has no header or no row, a name is empty or occurs twice, a row has another
    ///         number of cells than the header, or a time is no number or lies before the one above
    ///         it.
    static CsvTable read(const std::string& path);

    [[nodiscard]] const std::string& path() const { return path_; }

    /// The header, the time's column first.
    [[nodiscard]] const std::vector<std::string>& names() const { return names_; }

    [[nodiscard]] std::size_t rowCount() const { return rows_.size(); }

    [[nodiscard]] double time(std::size_t row) const { return numbers_[0][row]; }

    /// Where a row stands, as "file:line".
    [[nodiscard]] std::string place(std::size_t row) const;

    /// The number in a cell.
    ///
    /// @throws InputError naming file, line and column when it is none.
    [[nodiscard]] double value(std::size_t row, std::size_t column) const;

    /// The number in a cell; nothing when it is none.
    [[nodiscard]] std::optional<double> number(std::size_t row, std::size_t column) const;

    /// The text in a cell, without the quotes around it.
    [[nodiscard]] std::string text(std::size_t row, std::size_t column) const;

    /// text() of every column.
    [[nodiscard]] std::vector<std::string> texts(std::size_t row) const;

    /// @throws InputError as value() does unless every cell of the column is a number.
    void requireNumbers(std::size_t column) const;

    /// The row that holds at time `t`: the last one at or before it, the first one before that.
    [[nodiscard]] std::size_t rowAt(double t) const;

    /// The value on the straight line between the rows around `t`; that of the first row before the
    /// first, of the last row after the last. Where two rows have one time, the later one counts
    /// from that time on.
    [[nodiscard]] double interpolateLinearly(std::size_t column, double t) const;

  private:
    struct Row {
        std::size_t lineNumber;
        std::size_t begin;
        std::size_t length;
    };

    void readHeader(std::string_view line, std::size_t lineNumber);
    void readRow(std::string_view line, std::size_t lineNumber);
    void checkTime(std::size_t row) const;
    [[nodiscard]] std::vector<std::string> cells(std::string_view line,
                                                 std::size_t lineNumber) const;
    [[noreturn]] void fail(std::size_t lineNumber, const std::string& problem) const;
    [[noreturn]] void failNoNumber(std::size_t row, std::size_t column) const;

    std::string path_;
    std::string content_; ///< Rows point into it: texts are rarely asked for, numbers at each step.
    std::vector<std::string> names_;
    std::vector<Row> rows_;
    std::vector<std::vector<double>> numbers_; ///< By column, then row; NaN where there is none.
};

} // namespace program_support
