#include "fmu_runtime/foreign_message.h"
#include "fmu_runtime/instance.h"
#include "fmu_runtime/log.h"
#include "fmu_runtime/number_text.h"
#include "platform/foreign_text.h"
#include "support/memory_end.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <thread>

namespace fmu_runtime {
namespace {

std::string realText(double value) {
    std::array<char, realTextSize> text{};
    return {text.data(), writeReal(text.data(), value)};
}

TEST(NumberText, IsThatOfPrintfOnEveryPlatform) {
    using Limits = std::numeric_limits<double>;
    EXPECT_EQ(realText(0.1), "1.0000000000000001e-01");
    EXPECT_EQ(realText(-0.0), "-0.0000000000000000e+00");
    EXPECT_EQ(realText(1.0 / 3.0), "3.3333333333333331e-01");
    EXPECT_EQ(realText(Limits::max()), "1.7976931348623157e+308");
    EXPECT_EQ(realText(-Limits::denorm_min()), "-4.9406564584124654e-324");
    EXPECT_EQ(realText(Limits::infinity()), "inf");
    EXPECT_EQ(realText(-Limits::infinity()), "-inf");
    EXPECT_EQ(realText(Limits::quiet_NaN()), "nan");
    EXPECT_EQ(realText(-Limits::quiet_NaN()), "-nan");
}

std::string exactText(double value) {
    std::array<char, realTextSize> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value,
                                       std::chars_format::scientific, 16)
                             .ptr};
}

TEST(NumberText, HasTheDigitsOfExactArithmetic) {
    std::mt19937_64 bits(1);
    for (int i = 0; i < 200'000; ++i) {
        const auto value = std::bit_cast<double>(bits());
        const double time = i * 0.001;
        const double subnormal = std::bit_cast<double>(bits() >> (12 + i % 52));
        for (const double number : {std::isfinite(value) ? value : 0.0, time, subnormal}) {
            ASSERT_EQ(realText(number), exactText(number));
        }
    }
}

// Where the number of digits changes, and where the 18th digit is a 5 with nothing behind it.
TEST(NumberText, RoundsBoundariesAndTiesAsExactArithmetic) {
    for (int power = -1074; power < 1024; ++power) {
        const double ten = std::pow(10.0, power / 4);
        const double two = std::ldexp(1.0, power);
        for (const double middle : {ten, two, two * 99'999.0, two * 123'456'789.0}) {
            for (const double number :
                 {std::nextafter(middle, 0.0), middle, std::nextafter(middle, 1e308)}) {
                ASSERT_EQ(realText(number), std::isfinite(number) ? exactText(number) : "inf");
            }
        }
    }
}

TEST(LogMessage, IsCutTo255Characters) {
    LogMessage message(std::string(250, 'm'));
    message.add(1.0);
    EXPECT_EQ(message.text(), std::string(250, 'm') + "1.000");
    EXPECT_EQ(message.add("x").text().size(), 255U);
    EXPECT_EQ(LogMessage().add(std::int32_t{-2147483647 - 1}).add("").add("%").text(),
              "-2147483648%");
}

TEST(LogLine, IsCutTo255CharactersWhoeverWritesIt) {
    for (const std::size_t length : {std::size_t{255}, std::size_t{256}, std::size_t{300}}) {
        testing::internal::CaptureStdout();
        EXPECT_EQ(writeLogLine(nullptr, "FMISolver", "OK", "None", "%s",
                               std::string(length, 'm').c_str()),
                  0);
        const std::string line = testing::internal::GetCapturedStdout();
        EXPECT_EQ(line.substr(line.find(']') + 1),
                  "[FMISolver][None][OK] " + std::string(255, 'm') + "\n");
    }
}

// As after an FMU ended its thread in the middle of a message.
TEST(LogFile, ThatSomebodyNeverGivesBackIsWaitedForOnce) {
    FmiToolsInstance instance;
    const ExclusiveLog held(*instance.log);
    ASSERT_TRUE(held.isHeld());
    testing::internal::CaptureStdout();
    fmuLogger(instance.log.get(), "FMU", fmi2_status_ok, "c", "dropped");
    // The first of them waits for a second; all of them would take longer than a test may.
    for (int line = 0; line < 1000; ++line) {
        logRuntime(&instance, levels::ok, "kept");
    }
    const std::string output = testing::internal::GetCapturedStdout();
    EXPECT_EQ(output.find("dropped"), std::string::npos);
    EXPECT_EQ(std::ranges::count(output, '\n'), 1000);
}

std::string formatted(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const LogMessage message = formatForeignMessage(format, arguments);
    va_end(arguments);
    return std::string(message.text());
}

TEST(ForeignMessage, IsFormattedAsByPrintf) {
    EXPECT_EQ(formatted("t=%g n=%d s=%s", 0.5, -3, "text"), "t=0.5 n=-3 s=text");
    EXPECT_EQ(formatted("[%-6.2f|%+5d|%05u|%#x]", 3.14159, 7, 42U, 255U),
              "[3.14  |   +7|00042|0xff]");
    EXPECT_EQ(formatted("[%*s|%-*s|%.*s]", 4, "a", 4, "b", 2, "cdef"), "[   a|b   |cd]");
    EXPECT_EQ(formatted("[%*d]", -4, 1), "[1   ]");
    EXPECT_EQ(formatted("%hhd %hu %ld %llu", 300, 65537, 5L, ~0ULL), "44 1 5 18446744073709551615");
    EXPECT_EQ(formatted("%I64d %zu %u", 1LL << 40, std::size_t{9}, ~0U),
              "1099511627776 9 4294967295");
    EXPECT_EQ(formatted("%c%c 100%%", 'o', 'k'), "ok 100%");
    const std::string longReal = platform::callersHaveLongDouble ? formatted("%Lg %d", 2.5L, 7)
                                                                 : formatted("%Lg %d", 2.5, 7);
    EXPECT_EQ(longReal, "2.5 7");
}

TEST(ForeignMessage, TakesTheArgumentsOfWhatTheWindowsCLibraryKnows) {
    EXPECT_EQ(formatted("%hs %d", "narrow", 7), "narrow 7");
    EXPECT_EQ(formatted("%S %d", L"wide", 7), "%S 7");
    EXPECT_EQ(formatted("%ls %d", L"wide", 7), "%ls 7");
    EXPECT_EQ(formatted("%ws %d", L"wide", 7), "%ws 7");
    EXPECT_EQ(formatted("%C %d", 'w', 7), "%C 7");
    EXPECT_EQ(formatted("%Iu %Id %d", ~std::size_t{0}, std::ptrdiff_t{-5}, 7),
              "18446744073709551615 -5 7");
    EXPECT_EQ(formatted("%I64d %I64u %I32d", -(1LL << 40), ~0ULL, 7),
              "-1099511627776 18446744073709551615 7");
}

TEST(ForeignMessage, EndsWithACharacterThatEndsATextAsItsSecondPassWould) {
    EXPECT_EQ(formatted("a%cb", 0), "a");
    EXPECT_EQ(formatted("a%3cb", 0), "a  ");
    EXPECT_EQ(formatted("a%-3cb", 0), "a");
}

TEST(ForeignMessage, TrustsNeitherFormatNorArguments) {
    int target = 7;
    EXPECT_EQ(formatted("%n%d", &target, 5), "%n5");
    EXPECT_EQ(target, 7);
    EXPECT_EQ(formatted("%s", static_cast<const char*>(nullptr)), "(null)");
    // NOLINTNEXTLINE(performance-no-int-to-ptr): it has to lead nowhere
    EXPECT_EQ(formatted("%s|", reinterpret_cast<const char*>(std::uintptr_t{8})), "(unreadable)|");
    EXPECT_EQ(formatted(nullptr), "(null)");
    // NOLINTNEXTLINE(performance-no-int-to-ptr): it has to lead nowhere
    EXPECT_EQ(formatted(reinterpret_cast<const char*>(std::uintptr_t{8})), "(unreadable)");
    EXPECT_EQ(formatted("50%, %y|"), "50%, %y|");
    EXPECT_EQ(formatted("end %"), "end %");
    EXPECT_EQ(formatted("%-"), "%-");
    EXPECT_EQ(formatted("%2000000000d", 1), std::string(255, ' '));
    EXPECT_EQ(formatted("%.999999999f", 0.0).size(), 255U);
    EXPECT_EQ(formatted(std::string(1 << 20, 'a').c_str()), std::string(255, 'a'));
    EXPECT_EQ(formatted("%s", std::string(1 << 20, 'a').c_str()), std::string(255, 'a'));
    EXPECT_EQ(formatted("----------%-----------------------------d", 3), "----------3");
}

TEST(ForeignMessage, MayEndWhereMemoryDoes) {
    using test_support::MemoryEnd;
    const std::string_view ended("whole %d\0", 9);
    EXPECT_EQ(formatted(MemoryEnd(ended).text(), 7), "whole 7");
    const MemoryEnd cut("cut");
    char behind = 'x';
    // Wine reads zeros there.
    const std::string_view read =
        platform::readForeignMemory(cut.text() + 3, &behind, 1) ? "cut" : "(unreadable)";
    EXPECT_EQ(formatted(cut.text(), 7), read);
    EXPECT_EQ(formatted("%s", cut.text()), read);
    EXPECT_EQ(formatted("%.3s|", cut.text()), "cut|");
    LogFile log;
    testing::internal::CaptureStdout();
    fmuLogger(&log, cut.text(), fmi2_status_ok, cut.text(), "%s", "text");
    const std::string line = testing::internal::GetCapturedStdout();
    const std::string field = "[" + std::string(read) + "]";
    EXPECT_EQ(line.substr(line.find(']') + 1), field + field + "[OK] text\n");
}

TEST(ForeignMessage, MayChangeWhileItIsRead) {
    std::array<std::atomic<char>, 8> letters{};
    static_assert(sizeof letters == 8);
    const auto write = [&](std::string_view text) {
        for (std::size_t index = 0; index < text.size(); ++index) {
            letters[index].store(text[index], std::memory_order_relaxed);
        }
    };
    std::atomic<bool> done = false;
    std::thread changer([&] {
        while (!done) {
            write("%s%%%d");
            write(std::string_view("%d%s\0", 5));
        }
    });
    const auto* text = reinterpret_cast<const char*>(letters.data());
    for (int round = 0; round < 20'000; ++round) {
        // Each of up to three directives may be "%d" or "%s", which is "(unreadable)".
        const std::intptr_t any = 8;
        EXPECT_LE(formatted(text, any, any, any).size(), 40U);
        EXPECT_LE(formatted("%s", text).size(), 8U);
    }
    done = true;
    changer.join();
}

TEST(ForeignMessage, LosesDoubledPercentsInItsSecondPass) {
    const auto second = [](const char* text) {
        return std::string(withoutDoubledPercents(text).text());
    };
    EXPECT_EQ(second("100%% sure"), "100% sure");
    EXPECT_EQ(second("%s%s%n %d"), "%s%s%n %d");
    EXPECT_EQ(second("%%%%s"), "%%s");
    EXPECT_EQ(second("%%%"), "%%");
    EXPECT_EQ(second("%"), "%");
    EXPECT_EQ(second(""), "");
}

} // namespace
} // namespace fmu_runtime
