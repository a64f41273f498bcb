#include "program_support/csv_table.h"
#include "program_support/input_error.h"
#include "program_support/interrupt.h"
#include "program_support/number_text.h"
#include "program_support/plot.h"
#include "program_support/progress_bar.h"
#include "support/environment.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <csignal>

using namespace program_support;
using test_support::TemporaryDirectory;

namespace {

class CsvTableTest : public testing::Test {
  protected:
    CsvTable read(std::string_view content) {
        test_support::writeFile(directory / "signals.csv", content);
        return CsvTable::read(path());
    }

    std::string errorOf(std::string_view content) {
        try {
            read(content);
        } catch (const InputError& error) {
            return error.what();
        }
        return "no error";
    }

    std::string path() const { return test_support::narrow(directory / "signals.csv"); }

    TemporaryDirectory directory{std::filesystem::path(u8"Fahrbahn näher")};
};

} // namespace

TEST(NumberText, AcceptsWholeFiniteNumbersOnly) {
    EXPECT_EQ(numberIn("1.5"), 1.5);
    EXPECT_EQ(numberIn("-2e-3"), -2e-3);
    EXPECT_EQ(numberIn("+4"), 4.0);
    for (const auto* text : {"", "abc", "1,5", "1.5x", " 1", "1 ", "inf", "-nan", "1e999", "+-1",
                             "0x10", "++1", "+"}) {
        EXPECT_FALSE(numberIn(text)) << text;
    }
}

TEST(NumberText, ErrorNamesPlaceAndText) {
    try {
        parseNumber("abc", "--stop-time");
        FAIL();
    } catch (const InputError& error) {
        EXPECT_STREQ(error.what(),
                     "--stop-time 'abc' is not a finite number; write it like 0.5 or 1e-3");
    }
}

TEST(NumberText, ShortestTextReadsBack) {
    EXPECT_EQ(shortNumber(0.1), "0.1");
    EXPECT_EQ(numberIn(shortNumber(1.0 / 3.0)), 1.0 / 3.0);
    EXPECT_EQ(roundedNumber(2.0 / 3.0, 3), "0.667");
}

TEST_F(CsvTableTest, ReadsByteOrderMarkQuotesAndBothLineEnds) {
    const auto table = read("\xEF\xBB\xBFtime, \"F[1]\" ,\"a \"\"b\"\", c\",name\r\n"
                            "0,1,2,\"x, y\"\n\r\n0.5,+3,4e1,z");
    EXPECT_EQ(table.names(), (std::vector<std::string>{"time", "F[1]", "a \"b\", c", "name"}));
    ASSERT_EQ(table.rowCount(), 2U);
    EXPECT_EQ(table.time(1), 0.5);
    EXPECT_EQ(table.value(1, 2), 40.0);
    EXPECT_EQ(table.text(0, 3), "x, y");
    EXPECT_EQ(table.columnOf("F[1]"), 1U);
    EXPECT_FALSE(table.columnOf("f[1]"));
}

TEST_F(CsvTableTest, InterpolatesAndHolds) {
    // The two rows at 2 are a jump: from there on the later one counts.
    const auto table = read("t,x\n1,10\n2,20\n2,40\n4,0\n");
    const std::vector<std::array<double, 3>> expected{// time, linear, hold
                                                      {0.0, 10.0, 10.0}, {1.0, 10.0, 10.0},
                                                      {1.5, 15.0, 10.0}, {2.0, 40.0, 40.0},
                                                      {3.0, 20.0, 40.0}, {9.0, 0.0, 0.0}};
    for (const auto& [time, linear, hold] : expected) {
        EXPECT_DOUBLE_EQ(table.interpolateLinearly(1, time), linear) << time;
        EXPECT_EQ(table.hold(1, time), hold) << time;
    }
}

TEST_F(CsvTableTest, ErrorsNameFileLineAndColumn) {
    const std::vector<std::pair<std::string, std::string>> expected{
        {"", "has no values"},
        {"t,x\n", "has no values"},
        {"t;x\n0;1\n", ":1: columns are separated by ';'"},
        {"t,x,x\n0,1,2\n", ":1: there are two columns 'x'"},
        {"t,,x\n0,1,2\n", ":1: column 2 has no name"},
        {"t,x\n0,1\n\n1\n", ":4: there are 1 values for the 2 columns"},
        {"t,x\nzero,1\n", ":2: the value 'zero' in column 't' is not a finite number"},
        {"t,x\nnan,1\n", ":2: the value 'nan' in column 't'"},
        {"t,x\n1,1\n0.5,1\n", ":3: the time 0.5 lies before that of the row above"},
        {"t,x\n1,\"1\n", ":2: a quoted value is not closed"}};
    for (const auto& [content, message] : expected) {
        const auto error = errorOf(content);
        EXPECT_NE(error.find(message), std::string::npos) << error;
        EXPECT_NE(error.find(path()), std::string::npos) << error;
    }
}

TEST_F(CsvTableTest, TextWhereANumberIsNeeded) {
    const auto table = read("t,x\n0,1\n1,one\n");
    EXPECT_EQ(table.value(0, 1), 1.0);
    EXPECT_THROW(table.requireNumbers(1), InputError);
    EXPECT_THROW(static_cast<void>(table.hold(1, 1.0)), InputError);
    EXPECT_NO_THROW(table.requireNumbers(0));
}

TEST_F(CsvTableTest, MissingFileAndDirectoryAreNamed) {
    for (const auto& file : {directory / "missing.csv", directory.path()}) {
        try {
            CsvTable::read(test_support::narrow(file));
            FAIL();
        } catch (const InputError& error) {
            EXPECT_NE(std::string(error.what()).find(test_support::narrow(file)),
                      std::string::npos);
        }
    }
}

TEST_F(CsvTableTest, PlotErrorsNameFileColumnAndRemedy) {
    read("time,F[1][N],gone[m]\n0,1,nan\n1,2,nan\n");
    const test_support::ScopedEnvironment noPrograms("PATH",
                                                     test_support::narrow(directory.path()));
    const std::string image = test_support::narrow(directory / "image.svg");

    struct Case {
        std::string column;
        std::string image;
        std::string message;
    };

    const std::vector<Case> cases{
        {"F[1]", "image.gif",
         "cannot plot into 'image.gif'; give a name that ends in .svg or .png"},
        {"force", image,
         "have no column 'force' to plot; choose by --plot-columns from F[1], gone"},
        {"gone", image, "has no finite number to plot"},
        {"F[1]", image, "the program gnuplot is not there; install it"}};
    for (const Case& wrong : cases) {
        try {
            plot({path(), wrong.image, {wrong.column}});
            FAIL() << wrong.message;
        } catch (const InputError& error) {
            EXPECT_NE(std::string(error.what()).find(wrong.message), std::string::npos)
                << error.what();
        }
    }
}

TEST(ProgressBar, TellsTimeAndRealTimeFactor) {
    EXPECT_EQ(progressLine(0.0, 10.0, 2.5, 5.0),
              "[#######.......................] 25 %  t = 2.5 of 10 s  real-time factor 0.5");
    EXPECT_EQ(progressLine(1.0, 1.0, 1.0, 0.0),
              "[##############################] 100 %  t = 1 of 1 s");
}

TEST(InterruptGuard, SignalIsNotedAndHandlersComeBack) {
    const auto before = std::signal(SIGINT, SIG_IGN);
    {
        const InterruptGuard guard;
        EXPECT_FALSE(interrupted());
        std::raise(SIGINT);
        EXPECT_TRUE(interrupted());
    }
    EXPECT_EQ(std::signal(SIGINT, before), SIG_IGN);
}
