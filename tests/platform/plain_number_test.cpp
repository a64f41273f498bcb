#include "platform/plain_number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

namespace platform {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(PlainNumber, IsWhatAtofReadsInTheCLocale) {
    struct {
        const char* text;
        double value;
    } const cases[] = {
        {"1.5", 1.5},
        {" \t\n\v\f\r-2.5x", -2.5},
        {"+.5", 0.5},
        {"5.", 5.0},
        {"1,5", 1.0},
        {"", 0.0},
        {"abc", 0.0},
        {"-", 0.0},
        {"--1", 0.0},
        {"+-1", 0.0},
        {"1e3", 1000.0},
        {"1e", 1.0},
        {"1e+", 1.0},
        {"1e-2z", 0.01},
        {"0x1.8p1", 3.0},
        {"-0XAp0", -10.0},
        {"0x", 0.0},
        {"0x1p", 1.0},
        {"inf", infinity},
        {"-INFINITYx", -infinity},
        {"1e999", infinity},
        {"-1e999", -infinity},
        {"1e-999", 0.0},
        {"0.0001e400", infinity},
        {"0x1p99999", infinity},
        {"0x1p-99999", 0.0},
        {"1e99999999999999999999", infinity},
        {"1e-99999999999999999999", 0.0},
        {"4.9e-324", 4.9e-324},
        {"1 2", 1.0},
        {". 5", 0.0},
    };

    for (const auto& c : cases) {
        EXPECT_EQ(realOf(c.text), c.value) << c.text;
    }
    EXPECT_TRUE(std::signbit(realOf("-0")));
    EXPECT_TRUE(std::isnan(realOf(" nan(7)")));
    EXPECT_EQ(realOf((std::string(400, '9') + "e-100").c_str()), 1e300);
    EXPECT_EQ(realOf(("0." + std::string(400, '0') + "1").c_str()), 0.0);
}

TEST(PlainNumber, IsWhatAtoiReadsInTheCLocale) {
    EXPECT_EQ(integerOf(" \v-12.9"), -12);
    EXPECT_EQ(integerOf("+7x"), 7);
    EXPECT_EQ(integerOf("x7"), 0);
    EXPECT_EQ(integerOf("- 7"), 0);
    EXPECT_EQ(integerOf("0x10"), 0);
    EXPECT_EQ(integerOf(""), 0);
    EXPECT_EQ(integerOf("\xA0"
                        "7"),
              0); // White space in some locales.
    EXPECT_EQ(integerOf("2147483647"), 2147483647);
}

} // namespace
} // namespace platform
