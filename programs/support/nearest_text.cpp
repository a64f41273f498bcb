#include "programs/support/nearest_text.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace program_support {

namespace {

/// How many letters to insert, remove or replace to get from one text to the other.
std::size_t editDistance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

} // namespace

std::string nearestText(std::string_view written, const std::vector<std::string>& known) {
    std::string nearest;
    std::size_t best = std::max<std::size_t>(written.size() / 3, 1) + 1;
    for (const auto& text : known) {
        const auto distance = text.starts_with(written) ? 0 : editDistance(written, text);
        if (distance < best) {
            best = distance;
            nearest = text;
        }
    }
    return nearest;
}

} // namespace program_support
