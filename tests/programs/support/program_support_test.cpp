#include "platform/child_process.h"
#include "platform/terminal.h"
#include "programs/support/csv_table.h"
#include "programs/support/early_end.h"
#include "programs/support/exit_status.h"
#include "programs/support/input_error.h"
#include "programs/support/input_files.h"
#include "programs/support/number_text.h"
#include "programs/support/output_files.h"
#include "programs/support/plot.h"
#include "programs/support/plot_options.h"
#include "programs/support/progress_bar.h"
#include "programs/support/step_grid.h"
#include "programs/support/terminal_text.h"
#include "support/current_directory.h"
#include "support/environment.h"
#include "support/files.h"
#include "support/run_program.h"
#include "support/withheld_file.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <sstream>
#include <system_error>
#include <utility>

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

std::string problemOfReading(const std::filesystem::path& file) {
    try {
        requireReadableFile(test_support::narrow(file));
    } catch (const InputError& error) {
        return error.what();
    }
    return {};
}

TEST(InputFiles, TellWhatIsMissingADirectoryOrWithheldApart) {
    const TemporaryDirectory directory;
    const auto file = directory / "file";
    test_support::writeFile(file, "content");
    EXPECT_EQ(problemOfReading(file), "");
    EXPECT_TRUE(problemOfReading(directory / "none").starts_with("there is no file '"));
    EXPECT_TRUE(problemOfReading(file / "below").starts_with("there is no file '"));
    EXPECT_NE(problemOfReading(directory.path()).find("' is a directory, not a file; "),
              std::string::npos);
    std::filesystem::permissions(directory.path(), std::filesystem::perms::all);
    const test_support::WithheldFile withheld(test_support::narrow(file));
    const std::string problem = problemOfReading(file);
    EXPECT_TRUE(problem.starts_with(test_support::WithheldFile::reason)) << problem;
}

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
    for (const auto* text : {"0", "200000", "-0.0001", "2e-05", "1e+15"}) {
        EXPECT_EQ(plainNumber(*numberIn(text)), text);
    }
}

TEST_F(CsvTableTest, ReadsByteOrderMarkQuotesAndBothLineEnds) {
    const auto table = read("\xEF\xBB\xBFtime, \"F[1]\" ,\"a \"\"b\"\", c\",name\r\n"
                            "0,1,2,\"x, y\"\n\r\n0.5,+3,4e1,z");
    EXPECT_EQ(table.names(), (std::vector<std::string>{"time", "F[1]", "a \"b\", c", "name"}));
    ASSERT_EQ(table.rowCount(), 2U);
    EXPECT_EQ(table.time(1), 0.5);
    EXPECT_EQ(table.value(1, 2), 40.0);
    EXPECT_EQ(table.text(0, 3), "x, y");
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
        EXPECT_EQ(table.value(table.rowAt(time), 1), hold) << time;
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
    EXPECT_THROW(static_cast<void>(table.value(1, 1)), InputError);
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

TEST(StepGrid, ComputesEachPointAndEndsAtTheStopTime) {
    struct Case {
        double start;
        double stop;
        double step;
        std::vector<double> points;
    };

    const std::vector<Case> cases{{0.0, 1.0, 0.3, {0.0, 0.3, 0.6, 3 * 0.3, 1.0}},
                                  {0.25, 1.0, 0.5, {0.25, 0.75, 1.0}},
                                  {0.0, 0.3, 0.1, {0.0, 0.1, 0.2, 0.3}}, // 3 * 0.1 lies beyond 0.3
                                  {0.0, 1.0000001, 1.0, {0.0, 1.0000001}}, // a rest of rounding
                                  {0.0, 1e-7, 1.0, {0.0, 1e-7}},
                                  {2.0, 2.0, 1.0, {2.0}}};
    for (const Case& c : cases) {
        const StepGrid grid(c.start, c.stop, c.step);
        std::vector<double> points;
        for (std::int64_t step = 0; step <= grid.stepCount(); ++step) {
            points.push_back(grid.timeAt(step));
        }
        EXPECT_EQ(points, c.points) << c.stop << " by " << c.step;
    }
    EXPECT_EQ(StepGrid(0.0, 1e4, 1e-3).timeAt(9'999'999), 9'999'999 * 1e-3);
}

TEST_F(CsvTableTest, TakesAHeaderOfManyColumns) {
    std::string header = "t";
    std::string row = "0";
    for (int column = 0; column < 300'000; ++column) {
        header += ",column" + std::to_string(column);
        row += ",1";
    }
    EXPECT_EQ(read(header + '\n' + row + '\n').names().size(), 300'001U);
    EXPECT_NE(errorOf(header + ",column7\n").find("two columns 'column7'"), std::string::npos);
}

TEST_F(CsvTableTest, PlotTakesNoTextForACommand) {
    const std::vector<std::string> names{"`touch made`", "'; system 'touch made' #",
                                         "\"; system \"touch made\"; \"", "{/Symbol a}_b^c",
                                         "@macro $(touch made) \\x\xC2\x9B\x1B[2Jy"};
    std::string header = "time";
    for (const auto& name : names) {
        std::string doubled;
        for (const char c : name) {
            doubled.append(c == '"' ? 2 : 1, c);
        }
        header += ",\"" + doubled + "[`touch made`'\"";
        header.insert(header.size() - 1, "]");
    }
    read(header + "\n0,1,2,3,4,5\n1,2,3,4,5,6\n");
    const auto image = directory / "it's `touch made`.svg";
    try {
        plot({path(), test_support::narrow(image), names, "\"; system 'touch made' # title"});
    } catch (const InputError& error) {
        GTEST_SKIP() << error.what();
    }
    const auto picture = test_support::readFile(image);
    for (const auto* text : {">`touch made`<", "system 'touch made' #", "touch made' # title",
                             "{/Symbol a}_b^c", "\\x\\x9B\\x1B[2Jy", "[`touch made`']"}) {
        EXPECT_NE(picture.find(text), std::string::npos) << text;
    }
    for (const auto& made : {directory / "made", std::filesystem::path("made")}) {
        EXPECT_FALSE(std::filesystem::exists(made)) << made;
    }
}

TEST_F(CsvTableTest, PlotTakesGnuplotFromAbsolutePlacesOnly) {
    read("time,x\n0,1\n");
    const CurrentDirectory here(directory.path());
    const auto suffix = platform::programPlaces.suffix;
    const auto image = test_support::narrow(directory / "image.svg");
    const auto errorWith = [&](const std::string& places) -> std::string {
        const test_support::ScopedEnvironment path("PATH", places);
        try {
            plot({this->path(), image, {"x"}});
        } catch (const InputError& error) {
            return error.what();
        }
        return "no error";
    };
    const auto planted = directory / (std::string("gnuplot") + suffix);
    std::filesystem::copy_file(test_support::programPath("fmu_run"), planted);
    for (const std::string places : {"", ".", "no such directory", ".."}) {
        EXPECT_NE(errorWith(places).find("gnuplot is not there"), std::string::npos) << places;
    }
    EXPECT_NE(errorWith(test_support::narrow(directory.path())).find("could not draw"),
              std::string::npos);
}

TEST(TerminalText, LeavesNothingThatATerminalObeys) {
    const std::vector<std::pair<std::string, std::string>> texts{
        {"Größe in µm, 10 €, 𝄞\tand more\n", "Größe in µm, 10 €, 𝄞\tand more\n"},
        {"\x1B]0;title\x07", "\\x1B]0;title\\x07"},
        {std::string("nul\0, CR\r, DEL\x7F", 15), "nul\\x00, CR\\x0D, DEL\\x7F"},
        {"C1 \xC2\x9B\xC2\x80, no-break\xC2\xA0", "C1 \\x9B\\x80, no-break\xC2\xA0"}};
    for (const auto& [text, shown] : texts) {
        EXPECT_EQ(terminalText(text), shown);
    }
    if (platform::narrowTextsAreUtf8()) {
        EXPECT_EQ(terminalText("\x9B[2J \xC3( \xC0\x9B \xE0\x80\x9B \xED\xA0\x80 \xF5 \xE2\x82"),
                  "\\x9B[2J \\xC3( \\xC0\\x9B \\xE0\\x80\\x9B \\xED\\xA0\\x80 \\xF5 \\xE2\\x82");
    }
    EXPECT_EQ(terminalJson("{\"a\": \"\xC2\x9B\x7F\"}\n"), "{\"a\": \"\\u009B\\u007F\"}\n");
    EXPECT_EQ(terminalXml("<a b='\xC2\x9B'>\t\x7F\r</a>\n"), "<a b='&#x9B;'>\t&#x7F;&#x0D;</a>\n");
}

TEST(TerminalText, StreamCleansCharactersThatComeInPieces) {
    std::ostringstream target;
    {
        const TerminalStream clean(target);
        for (const char piece : std::string("\xE2\x82\xAC \xC2\x9B \x1B a\r\nb\r")) {
            target << piece << std::flush;
        }
        target << "c \xC2";
    }
    const auto end = platform::narrowTextsAreUtf8() ? "\\xC2" : "\xC2";
    EXPECT_EQ(target.str(), std::string("\xE2\x82\xAC \\x9B \\x1B a\nb\\x0Dc ") + end);
    EXPECT_TRUE(target.good());
}

TEST_F(CsvTableTest, OutputFilesMakeWayOrTellTheReason) {
    const auto file = directory / "old.csv";
    test_support::writeFile(file, "an earlier run's");
    clearOutputFile(test_support::narrow(file), "results file", "--output-file");
    EXPECT_FALSE(std::filesystem::exists(file));
    const auto error = [&](const std::filesystem::path& path) -> std::string {
        try {
            writeOutputFile(test_support::narrow(path), "content", "picture", "--plot");
        } catch (const std::runtime_error& problem) {
            return problem.what();
        }
        return "no error";
    };
    EXPECT_EQ(error(file), "no error");
    EXPECT_EQ(test_support::readFile(file), "content");
    EXPECT_NE(error(directory / "none" / "x.svg").find("x.svg': "), std::string::npos)
        << error(directory / "none" / "x.svg");
    std::error_code unsupported;
    std::filesystem::create_symlink(directory / "gone", directory / "link", unsupported);
    if (!unsupported) {
        EXPECT_NE(error(directory / "link").find("a link to a file that is not there"),
                  std::string::npos);
        EXPECT_THROW(clearOutputFile(test_support::narrow(directory / "link"), "log", "--log"),
                     std::runtime_error);
        EXPECT_TRUE(std::filesystem::is_symlink(directory / "link"));
    }
}

TEST(EarlyEnd, IsDueAfterASignalOrTheTimeoutAndHandlersComeBack) {
    const auto before = std::signal(SIGINT, SIG_IGN);
    {
        const EarlyEnd earlyEnd(1000.0);
        EXPECT_FALSE(earlyEnd.isDue());
        EXPECT_EQ(earlyEnd.reason(), "");
        std::raise(SIGTERM);
        EXPECT_TRUE(earlyEnd.isDue());
        EXPECT_EQ(earlyEnd.reason(), "interrupted");
    }
    EXPECT_EQ(std::signal(SIGINT, before), SIG_IGN);
    EXPECT_EXIT(
        {
            const EarlyEnd earlyEnd(std::nullopt);
            std::raise(SIGINT);
            std::raise(SIGTERM);
        },
        [](int status) { return status != 0; }, "");
    const EarlyEnd over(0.0);
    EXPECT_TRUE(over.isDue());
    EXPECT_EQ(over.reason(), "stopped after --timeout 0 s");
    EXPECT_FALSE(EarlyEnd(std::nullopt).isDue());
}

TEST(PlotOptions, ChooseTheFirstColumnsOrTheNamedOnes) {
    const std::vector<std::string> offered(13, "x");
    EXPECT_EQ(columnsToPlot({"p.svg", ""}, offered).size(), 12U);
    EXPECT_EQ(columnsToPlot({"p.svg", ""}, {"a", "b"}), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(columnsToPlot({"p.svg", "A[1,2],c"}, offered),
              (std::vector<std::string>{"A[1,2]", "c"}));
}

TEST(ExitStatus, TellsWhatCannotBeUsedFromWhatFailed) {
    EXPECT_EQ(exitStatusOf("test", [] { return interruptedStatus; }), 130);
    testing::internal::CaptureStderr();
    EXPECT_EQ(exitStatusOf("test", []() -> int { throw InputError("no such file"); }), 2);
    EXPECT_EQ(exitStatusOf("test", []() -> int { throw std::runtime_error("no memory"); }), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "test: no such file\ntest: no memory\n");
}
