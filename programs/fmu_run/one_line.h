#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace fmu_run {

/// Characters that a terminal shows for UTF-8 text: its bytes but those that continue a character.
std::size_t widthOf(std::string_view text);

/// What is shown of a text of an FMU: one line, and no more characters than fit `width`; "..." where
/// it was cut. One name of 10,000 letters would make a flood of everything it is in.
std::string onOneLine(std::string_view text, std::size_t width);

} // namespace fmu_run
