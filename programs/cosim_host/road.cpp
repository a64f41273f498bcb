#include "programs/cosim_host/road.h"

#include "programs/support/csv_table.h"
#include "programs/support/input_error.h"

#include <cmath>
#include <memory>
#include <numbers>

namespace cosim_host {

namespace {

double flat(double /*distance*/) {
    return 0.0;
}

double step(double distance) {
    return distance < 20.0 ? 0.0 : 0.020;
}

constexpr double amplitude = 0.010;
constexpr double waveNumber = 2.0 * std::numbers::pi / 10.0;

double sine(double distance) {
    return amplitude * std::sin(waveNumber * distance);
}

double sineSlope(double distance) {
    return amplitude * waveNumber * std::cos(waveNumber * distance);
}

/// Slope of the straight line that the table is on at `distance`; 0 before and behind it.
double slopeIn(const program_support::CsvTable& table, double distance) {
    const std::size_t row = table.rowAt(distance);
    if (distance < table.time(row) || row + 1 == table.rowCount()) {
        return 0.0;
    }
    return (table.value(row + 1, 1) - table.value(row, 1)) /
           (table.time(row + 1) - table.time(row));
}

Road profile(const std::string& path) {
    using program_support::CsvTable;
    const auto table = std::make_shared<const CsvTable>(CsvTable::read(path));
    if (table->names().size() != 2) {
        throw program_support::InputError(
            "the road '" + path + "' has " + std::to_string(table->names().size()) +
            " columns; give two, distance and height, or name flat, step or sine");
    }
    table->requireNumbers(1);
    return {[table](double distance) { return table->interpolateLinearly(1, distance); },
            [table](double distance) { return slopeIn(*table, distance); }};
}

} // namespace

bool isBuiltInRoad(const std::string& name) {
    return name == "flat" || name == "step" || name == "sine";
}

Road makeRoad(const std::string& name) {
    if (name == "flat") {
        return {flat, flat};
    }
    if (name == "step") {
        return {step, flat};
    }
    if (name == "sine") {
        return {sine, sineSlope};
    }
    return profile(name);
}

} // namespace cosim_host
