#include "programs/support/joined.h"

namespace program_support {

std::string joined(const std::vector<std::string>& texts, std::string_view separator) {
    std::string result;
    for (const auto& text : texts) {
        result.append(&text == texts.data() ? "" : separator).append(text);
    }
    return result;
}

} // namespace program_support
