#pragma once

#include <functional>
#include <string>

namespace cosim_host {

/// A road over the distance along it (metres).
struct Road {
    std::function<double(double distance)> height; ///< Metres.
    std::function<double(double distance)> slope;  ///< Rise per distance; 0 at a jump.
};

/// What makeRoad() knows by name, for the program's help.
inline constexpr const char* roadDescription =
    "flat; step: 20 mm up after 20 m; sine: 10 mm up and down every 10 m; or a CSV file with the "
    "distance in m and the height in m";

/// Whether makeRoad() knows the road by name, so that no file describes it.
bool isBuiltInRoad(const std::string& name);

/// Makes the road of that name, or the one that the file of that name describes.
///
/// @throws program_support::InputError when the file cannot be read as such.
Road makeRoad(const std::string& name);

} // namespace cosim_host
