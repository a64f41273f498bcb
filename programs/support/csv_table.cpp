#include "programs/support/csv_table.h"

#include "programs/support/input_error.h"
#include "programs/support/input_files.h"
#include "programs/support/number_text.h"
#include "programs/support/trimmed.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_set>
#include <utility>

namespace program_support {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Takes a quoted cell from the front of `rest`; nothing when its closing quote is missing.
std::optional<std::string> takeQuoted(std::string_view& rest) {
    std::string cell;
    for (std::size_t i = 1; i < rest.size(); ++i) {
        if (rest[i] != '"') {
            cell += rest[i];
        } else if (i + 1 < rest.size() && rest[i + 1] == '"') {
            cell += rest[++i];
        } else {
            rest = trimmed(rest.substr(i + 1));
            return cell;
        }
    }
    return std::nullopt;
}

std::string takePlain(std::string_view& rest) {
    const auto length = std::min(rest.find(','), rest.size());
    std::string cell(trimmed(rest.substr(0, length)));
    rest.remove_prefix(length);
    return cell;
}

} // namespace

CsvTable CsvTable::read(const std::string& path) {
    CsvTable table;
    table.path_ = path;
    table.content_ = textFileContent(path);
    const std::string_view content = table.content_;
    std::size_t lineNumber = 0;
    std::size_t begin = content.starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
    while (begin < content.size()) {
        const std::size_t end = std::min(content.find('\n', begin), content.size());
        std::string_view line = content.substr(begin, end - begin);
        line = line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
        ++lineNumber;
        if (!trimmed(line).empty()) {
            table.names_.empty() ? table.readHeader(line, lineNumber)
                                 : table.readRow(line, lineNumber);
        }
        begin = end + 1;
    }
    if (table.rows_.empty()) {
        throw InputError("the file '" + path +
                         "' has no values; give a header line and at least one row below it");
    }
    return table;
}

void CsvTable::readHeader(std::string_view line, std::size_t lineNumber) {
    if (line.find(',') == std::string_view::npos && line.find(';') != std::string_view::npos) {
        fail(lineNumber, "columns are separated by ';'; separate them by ','");
    }
    names_ = cells(line, lineNumber);
    std::unordered_set<std::string_view> known;
    for (const auto& name : names_) {
        if (name.empty()) {
            fail(lineNumber, "column " + std::to_string(known.size() + 1) +
                                 " has no name; name it in the header");
        }
        if (!known.insert(name).second) {
            fail(lineNumber, "there are two columns '" + name + "'; remove one");
        }
    }
    numbers_.resize(names_.size());
}

void CsvTable::readRow(std::string_view line, std::size_t lineNumber) {
    const auto row = cells(line, lineNumber);
    if (row.size() != names_.size()) {
        fail(lineNumber, "there are " + std::to_string(row.size()) + " values for the " +
                             std::to_string(names_.size()) +
                             " columns of the header; write one for each");
    }
    rows_.push_back(
        {lineNumber, static_cast<std::size_t>(line.data() - content_.data()), line.size()});
    for (std::size_t column = 0; column < row.size(); ++column) {
        numbers_[column].push_back(
            numberIn(row[column]).value_or(std::numeric_limits<double>::quiet_NaN()));
    }
    checkTime(rows_.size() - 1);
}

void CsvTable::checkTime(std::size_t row) const {
    if (std::isnan(time(row))) {
        failNoNumber(row, 0);
    }
    if (row > 0 && time(row) < time(row - 1)) {
        fail(rows_[row].lineNumber,
             "the time " + text(row, 0) +
                 " lies before that of the row above; sort the rows by time");
    }
}

std::vector<std::string> CsvTable::cells(std::string_view line, std::size_t lineNumber) const {
    std::vector<std::string> result;
    std::string_view rest = line;
    while (true) {
        rest = trimmed(rest);
        if (rest.starts_with('"')) {
            auto cell = takeQuoted(rest);
            if (!cell || (!rest.empty() && rest.front() != ',')) {
                fail(lineNumber,
                     "a quoted value is not closed before the next ','; close it by '\"'");
            }
            result.push_back(std::move(*cell));
        } else {
            result.push_back(takePlain(rest));
        }
        if (rest.empty()) {
            return result;
        }
        rest.remove_prefix(1);
    }
}

void CsvTable::fail(std::size_t lineNumber, const std::string& problem) const {
    throw InputError(path_ + ":" + std::to_string(lineNumber) + ": " + problem);
}

void CsvTable::failNoNumber(std::size_t row, std::size_t column) const {
    fail(rows_[row].lineNumber, "the value '" + text(row, column) + "' in column '" +
                                    names_[column] +
                                    "' is not a finite number; write it like 0.5 or 1e-3");
}

std::string CsvTable::place(std::size_t row) const {
    return path_ + ":" + std::to_string(rows_[row].lineNumber);
}

double CsvTable::value(std::size_t row, std::size_t column) const {
    const double number = numbers_[column][row];
    if (std::isnan(number)) {
        failNoNumber(row, column);
    }
    return number;
}

std::optional<double> CsvTable::number(std::size_t row, std::size_t column) const {
    const double number = numbers_[column][row];
    return std::isnan(number) ? std::nullopt : std::optional(number);
}

std::string CsvTable::text(std::size_t row, std::size_t column) const {
    return texts(row)[column];
}

std::vector<std::string> CsvTable::texts(std::size_t row) const {
    const Row& place = rows_[row];
    const std::string_view line = std::string_view(content_).substr(place.begin, place.length);
    return cells(line, place.lineNumber);
}

void CsvTable::requireNumbers(std::size_t column) const {
    for (std::size_t row = 0; row < rowCount(); ++row) {
        static_cast<void>(value(row, column));
    }
}

std::size_t CsvTable::rowAt(double t) const {
    const auto& times = numbers_[0];
    const auto after = std::upper_bound(times.begin(), times.end(), t);
    return after == times.begin() ? 0 : static_cast<std::size_t>(after - times.begin()) - 1;
}

double CsvTable::interpolateLinearly(std::size_t column, double t) const {
    const std::size_t row = rowAt(t);
    if (t <= time(row) || row + 1 == rowCount()) {
        return value(row, column);
    }
    const double share = (t - time(row)) / (time(row + 1) - time(row));
    return std::lerp(value(row, column), value(row + 1, column), share);
}

} // namespace program_support
