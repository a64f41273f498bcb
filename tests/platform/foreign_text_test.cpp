#include "platform/foreign_text.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace platform {
namespace {

TEST(ForeignText, IsCopiedUpToItsEndOrTheCapacity) {
    std::array<char, 10000> copy{};
    const std::string text(9000, 'a');
    EXPECT_EQ(copyForeignText(text.c_str(), copy.data(), copy.size()), 9000);
    EXPECT_EQ(std::string_view(copy.data(), 9000), text);
    EXPECT_EQ(copyForeignText(text.c_str(), copy.data(), 3), 3);
    EXPECT_EQ(copyForeignText("", copy.data(), 3), 0);
    EXPECT_EQ(copyForeignText(text.c_str(), copy.data(), 0), 0);
}

TEST(ForeignText, OfAWildPointerIsRefused) {
    std::array<char, 8> copy{};
    for (const std::uintptr_t address : {std::uintptr_t{1}, std::uintptr_t{0x1000}, UINTPTR_MAX}) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): it has to lead nowhere
        const auto* wild = reinterpret_cast<const char*>(address);
        EXPECT_EQ(copyForeignText(wild, copy.data(), copy.size()), -1) << address;
    }
}

} // namespace
} // namespace platform
