#include "platform/held_directory.h"

#include <algorithm>

namespace platform {

HeldDirectory::~HeldDirectory() {
    leave(0);
}

bool HeldDirectory::enter(std::string_view folder) {
    std::vector<std::string> wanted;
    while (!folder.empty()) {
        const std::size_t end = std::min(folder.find('/'), folder.size());
        const std::string_view name = folder.substr(0, end);
        if (!name.empty() && name != ".") {
            wanted.emplace_back(name);
        }
        folder.remove_prefix(std::min(end + 1, folder.size()));
    }
    const auto differs = std::ranges::mismatch(names_, wanted);
    const auto common = static_cast<std::size_t>(differs.in1 - names_.begin());
    leave(common + 1);
    return std::all_of(differs.in2, wanted.end(), [&](const auto& name) { return descend(name); });
}

} // namespace platform
