// The runtime through its C interface, with the scripted FMU behind it.
#include "fmu_runtime/loaded_fmu.h"
#include "support/environment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace {

using namespace test_support;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Lines = std::vector<std::string>;

TEST(NullHandle, IsAnsweredByEachFunctionInItsOwnWay) {
    void* pointer = nullptr;
    std::int32_t integer = 7;
    double real = 7.0;
    const char* text = "untouched";
    EXPECT_EQ(fmiToolsSetLogFile(nullptr, "x"), -1);
    EXPECT_EQ(fmiToolsEnableDebugLogs(nullptr, 1), -1);
    EXPECT_EQ(fmiToolsGetGenerationTool(nullptr), nullptr);
    EXPECT_EQ(fmiToolsSetResultsFile(nullptr, "x"), -1);
    EXPECT_EQ(fmiToolsAttachUserData(nullptr, &real), -1);
    EXPECT_EQ(fmiToolsGetUserData(nullptr, &pointer), -1);
    EXPECT_EQ(fmiToolsSetVariableValue(nullptr, "x", "1"), 0);
    EXPECT_EQ(fmiToolsSetRealVariableValue(nullptr, "x", 1.0), 0);
    EXPECT_EQ(fmiToolsSetIntegerVariableValue(nullptr, "x", 1), 0);
    EXPECT_EQ(fmiToolsSetStringVariableValue(nullptr, "x", "1"), 0);
    EXPECT_EQ(fmiToolsGetRealVariableValue(nullptr, "x", &real), 0);
    EXPECT_EQ(fmiToolsGetIntegerVariableValue(nullptr, "x", &integer), 0);
    EXPECT_EQ(fmiToolsGetStringVariableValue(nullptr, "x", &text), 0);
    EXPECT_EQ(real, 7.0);
    EXPECT_EQ(integer, 7);
    EXPECT_STREQ(text, "untouched");
    EXPECT_EQ(fmiToolsGetVariableExists(nullptr, "x", &integer), 0);
    EXPECT_EQ(integer, 0);
    EXPECT_EQ(fmiToolsSetStartTime(nullptr, 1.0), -1);
    EXPECT_EQ(fmiToolsSetEndTime(nullptr, 1.0), -1);
    EXPECT_EQ(fmiToolsSetLogInterval(nullptr, 1.0), 0);
    EXPECT_EQ(fmiToolsInitialize(nullptr), -1);
    EXPECT_EQ(fmiToolsStartInitialization(nullptr), -1);
    EXPECT_EQ(fmiToolsEndInitialization(nullptr), -1);
    EXPECT_EQ(fmiToolsSimulateToT(nullptr, 1.0), 0);
    EXPECT_EQ(fmiToolsSimulate(nullptr), 0);
    EXPECT_EQ(fmiToolsCleanup(nullptr), 0);
    EXPECT_EQ(fmiToolsLoadFmu(nullptr, "w", "s"), nullptr);
}

TEST(Instance, StoresTheCallersPointerAndKnowsTheTool) {
    LoadedFmu first("scripted");
    LoadedFmu second("scripted");
    void* pointer = &first;
    EXPECT_EQ(fmiToolsGetUserData(first, &pointer), 0);
    EXPECT_EQ(pointer, nullptr);
    EXPECT_EQ(fmiToolsAttachUserData(first, &second), 0);
    fmiToolsGetUserData(first, &pointer);
    EXPECT_EQ(pointer, &second);
    fmiToolsGetUserData(second, &pointer);
    EXPECT_EQ(pointer, nullptr);
    EXPECT_THAT(fmiToolsGetGenerationTool(first), testing::Not(testing::StrEq("")));
}

TEST(Variables, ArePassedByTheirNamesAndLogged) {
    LoadedFmu fmu("scripted");
    EXPECT_EQ(fmiToolsSetRealVariableValue(fmu, "F[2]", -0.1), 0);
    EXPECT_EQ(fmu.real("P[2]"), -0.1);
    EXPECT_EQ(fmiToolsSetIntegerVariableValue(fmu, "selector", 4), 0);
    std::int32_t integer = 0;
    EXPECT_EQ(fmiToolsGetIntegerVariableValue(fmu, "selected", &integer), 0);
    EXPECT_EQ(integer, 7);
    EXPECT_EQ(fmiToolsSetStringVariableValue(fmu, "label", "50% %s"), 0);
    const char* text = nullptr;
    EXPECT_EQ(fmiToolsGetStringVariableValue(fmu, "echo", &text), 0);
    EXPECT_STREQ(text, "50% %s");
    EXPECT_EQ(fmu.log(), (Lines{"[FMITools][None][OK] Set input F[2]=-1.0000000000000001e-01",
                                "[FMITools][None][OK] Fetched output P[2]=-1.0000000000000001e-01",
                                "[FMITools][None][OK] Set input selector=4",
                                "[FMITools][None][OK] Set input label=50% %s"}));
    std::int32_t exists = -1;
    EXPECT_EQ(fmiToolsGetVariableExists(fmu, "energy", &exists), 0);
    EXPECT_EQ(exists, 1);
    EXPECT_EQ(fmiToolsGetVariableExists(fmu, "Energy", &exists), 0);
    EXPECT_EQ(exists, 0);
}

TEST(Variables, AreSetFromTextsByTheirType) {
    struct {
        const char* name;
        const char* text;
        int result;
        const char* line;
    } const cases[] = {
        {"u", " 2.5x", 0, "[OK] Set input u=2.5000000000000000e+00"},
        {"u", "abc", 0, "[OK] Set input u=0.0000000000000000e+00"},
        {"selector", "12.9", 0, "[OK] Set input selector=12"},
        {"mode", "3", 0, "[OK] Set input mode=3"},
        {"label", "", 0, "[OK] Set input label="},
        // The scripted FMU has no Integer of this value reference, as hardly any FMU has for a
        // Boolean.
        {"enabled", "true", 0, "[OK] Set input enabled=0"},
    };

    LoadedFmu fmu("scripted");
    for (const auto& c : cases) {
        EXPECT_EQ(fmiToolsSetVariableValue(fmu, c.name, c.text), c.result);
        EXPECT_EQ(fmu.lastLines(1), Lines{c.line}) << c.name << " " << c.text;
    }
    const auto before = fmu.log();
    EXPECT_EQ(fmiToolsSetVariableValue(fmu, "missing", "1"), -202);
    EXPECT_EQ(fmu.log(), before);
}

TEST(NullPointer, IsAFailureOfTheCallThatGotIt) {
    LoadedFmu fmu("scripted");
    const Lines failedGet{"[Error] Failed to get output x"};
    EXPECT_EQ(fmiToolsGetRealVariableValue(fmu, "x", nullptr), -202);
    EXPECT_EQ(fmu.lastLines(1), failedGet);
    EXPECT_EQ(fmiToolsGetIntegerVariableValue(fmu, "selected", nullptr), -202);
    EXPECT_EQ(fmiToolsGetStringVariableValue(fmu, "echo", nullptr), -202);
    EXPECT_EQ(fmiToolsSetStringVariableValue(fmu, "label", nullptr), -202);
    EXPECT_EQ(fmu.lastLines(1), Lines{"[Error] Failed to set input label"});
    const auto before = fmu.log();
    EXPECT_EQ(fmiToolsSetVariableValue(fmu, "label", nullptr), -202);
    EXPECT_EQ(fmiToolsGetVariableExists(fmu, "label", nullptr), 0);
    EXPECT_EQ(fmiToolsGetUserData(fmu, nullptr), -1);
    EXPECT_EQ(fmu.log(), before);
    EXPECT_EQ(fmiToolsSetRealVariableValue(fmu, nullptr, 1.0), -202);
    EXPECT_EQ(fmu.lastLines(1), Lines{"[Error] Could not find input (null)"});
}

TEST(Variables, FailWithTheirNameInTheLog) {
    LoadedFmu fmu("scripted");
    fmu.script("setReal(u)=warning; getReal(x)=discard; setInteger=9; getString=-1");
    double real = 5.0;
    std::int32_t integer = 5;
    const char* text = nullptr;
    EXPECT_EQ(fmiToolsSetRealVariableValue(fmu, "u", 1.0), -202);
    EXPECT_EQ(fmiToolsSetVariableValue(fmu, "u", "1"), 0); // The attempt is what counts here.
    EXPECT_EQ(fmiToolsSetIntegerVariableValue(fmu, "selector", 1), -202);
    EXPECT_EQ(fmiToolsGetRealVariableValue(fmu, "x", &real), -202);
    EXPECT_EQ(real, 5.0);
    EXPECT_EQ(fmiToolsGetStringVariableValue(fmu, "echo", &text), -202);
    EXPECT_EQ(fmiToolsSetRealVariableValue(fmu, "nobody", 1.0), -202);
    EXPECT_EQ(fmiToolsGetIntegerVariableValue(fmu, "nothing", &integer), -202);
    EXPECT_EQ(fmu.lastLines(7),
              (Lines{"[Error] Failed to set input u", "[Error] Failed to set input u",
                     "[Error] Failed to set input selector", "[Error] Failed to get output x",
                     "[Error] Failed to get output echo", "[Error] Could not find input nobody",
                     "[Error] Could not find output nothing"}));
}

TEST(Initialisation, IsLoggedStepByStep) {
    const Lines setup{"[OK] Setting up experiment", "[OK] Starting FMU initialisation",
                      "[OK] Entering initialisation mode"};
    LoadedFmu halves("scripted");
    EXPECT_EQ(fmiToolsStartInitialization(halves), 0);
    EXPECT_EQ(halves.lastLines(9), setup);
    EXPECT_EQ(fmiToolsEndInitialization(halves), 0);
    EXPECT_EQ(halves.lastLines(2),
              (Lines{"[OK] Exiting initialisation mode", "[OK] Initialised FMU"}));
    LoadedFmu whole("scripted");
    EXPECT_EQ(fmiToolsInitialize(whole), 0);
    EXPECT_EQ(whole.lastLines(9),
              (Lines{"[OK] Initialising FMU", "[OK] Setting up experiment",
                     "[OK] Starting FMU initialisation", "[OK] Entering initialisation mode",
                     "[OK] Exiting initialisation mode", "[OK] Initialised FMU",
                     "[OK] Initialised FMU"}));
}

TEST(Initialisation, FailsInEachOfItsCalls) {
    const std::string failed = "[Error] Failed to initialise FMU";

    struct {
        const char* script;
        Lines end;
    } const cases[] = {
        {"setupExperiment=warning",
         {"[OK] Setting up experiment", "[Error] Failed to setup experiment", failed}},
        {"enterInitializationMode=fatal",
         {"[OK] Entering initialisation mode", "[Error] Failed to enter initialisation mode",
          failed}},
        {"exitInitializationMode=pending",
         {"[OK] Exiting initialisation mode", "[Error] Failed to exit initialisation mode", failed,
          failed}},
    };

    for (const auto& c : cases) {
        LoadedFmu fmu("scripted");
        fmu.script(c.script);
        EXPECT_EQ(fmiToolsInitialize(fmu), -200);
        EXPECT_EQ(fmu.lastLines(c.end.size()), c.end);
    }
}

TEST(Stepping, GoesToEachTargetExactlyOnce) {
    LoadedFmu fmu("scripted");
    fmiToolsSetVariableValue(fmu, "u", "2");
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.0), 0);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.1), 0);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.1 + 1e-17), 0);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.05), 0);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.1 + 1e-15), 0);
    std::int32_t steps = 0;
    fmiToolsGetIntegerVariableValue(fmu, "steps", &steps);
    EXPECT_EQ(steps, 2);
    const auto rows = fmu.rows();
    ASSERT_EQ(rows.size(), 6U);
    EXPECT_THAT(rows[2], testing::StartsWith("1.0000000000000001e-01,"));
    EXPECT_EQ(rows[2], rows[3]);
    EXPECT_EQ(rows[2], rows[4]); // A target behind the current time moves nothing.
    EXPECT_THAT(rows[5], testing::StartsWith("1.0000000000000100e-01,"));
}

TEST(Stepping, SkipsWhatIsNotLongerThanTheEpsilonOfDouble) {
    constexpr double epsilon = 0x1p-52;
    LoadedFmu fmu("scripted");
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, epsilon), 0);
    EXPECT_THAT(fmu.rows().back(), testing::StartsWith("0.0000000000000000e+00,"));
    EXPECT_EQ(fmiToolsSimulateToT(fmu, std::nextafter(epsilon, 1.0)), 0);
    EXPECT_THAT(fmu.rows().back(), testing::StartsWith("2.2204460492503136e-16,"));
    EXPECT_THAT(fmu.calls(), HasSubstr("\ndoStep 0 2.2204460492503136e-16\n"));
}

TEST(Stepping, EndsAtTheTargetAndNotAtTheSumOfTheSteps) {
    constexpr double first = 0.3;
    constexpr double second = 0.801;
    ASSERT_NE(first + (second - first), second);
    LoadedFmu fmu("scripted");
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    for (const double time : {first, second, 1.0}) {
        EXPECT_EQ(fmiToolsSimulateToT(fmu, time), 0);
        EXPECT_EQ(std::stod(fmu.rows().back()), time);
    }
    const auto calls = lines(fmu.calls());
    const auto last = std::ranges::find_if(calls.rbegin(), calls.rend(),
                                           [](auto& call) { return call.starts_with("doStep "); });
    ASSERT_NE(last, calls.rend());
    EXPECT_EQ(std::stod(last->substr(7)), second);
}

TEST(Stepping, ThatIsNotAnsweredOkLeavesTimeAndResultsAlone) {
    for (const char* status : {"warning", "discard", "error", "fatal", "pending", "17", "-3"}) {
        LoadedFmu fmu("scripted");
        fmu.script(("doStep@1=" + std::string(status)).c_str());
        ASSERT_EQ(fmiToolsInitialize(fmu), 0);
        EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.5), -201) << status;
        EXPECT_EQ(fmu.lastLines(2), (Lines{"[OK] Attempting step to t=5.0000000000000000e-01",
                                           "[Error] Attempted step failed"}));
        EXPECT_EQ(fmu.rows().size(), 1U);
        EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.5), 0);
        EXPECT_THAT(fmu.calls(), HasSubstr("doStep 0 0.5\ndoStep 0 0.5\n"));
    }
}

TEST(Simulate, WalksTheGridByRepeatedAddition) {
    struct {
        double start, end, interval;
        std::vector<double> times;
        int steps;
    } const cases[] = {
        {0.0, 1.0, 0.25, {0.0, 0.25, 0.5, 0.75, 1.0}, 4},
        {0.0, 1.0, 0.3, {0.0, 0.3, 0.6, 0.6 + 0.3}, 3},
        {0.5, 1.0, 0.5, {0.5, 1.0}, 2},
        {1.0, 0.5, 0.1, {}, 0},
    };

    for (const auto& c : cases) {
        LoadedFmu fmu("scripted");
        fmiToolsSetStartTime(fmu, c.start);
        fmiToolsSetEndTime(fmu, c.end);
        fmiToolsSetLogInterval(fmu, c.interval);
        ASSERT_EQ(fmiToolsInitialize(fmu), 0);
        EXPECT_EQ(fmiToolsSimulate(fmu), 0);
        const auto rows = fmu.rows();
        ASSERT_EQ(rows.size(), c.times.size() + 1);
        for (std::size_t index = 0; index < c.times.size(); ++index) {
            EXPECT_EQ(std::stod(rows[index + 1]), c.times[index]);
        }
        std::int32_t steps = -1;
        fmiToolsGetIntegerVariableValue(fmu, "steps", &steps);
        EXPECT_EQ(steps, c.steps);
    }
}

TEST(Simulate, GoesOnAfterFailures) {
    LoadedFmu fmu("scripted"); // Its default experiment: 0 to 1 in steps of 0.1.
    fmu.script("doStep@2=error; getReal(y)@4=error");
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    EXPECT_EQ(fmiToolsSimulate(fmu), 0);
    const auto log = fmu.log();
    EXPECT_EQ(std::ranges::count(log, "[FMITools][None][Error] Attempted step failed"), 1);
    EXPECT_EQ(std::ranges::count(log, "[FMITools][None][Error] Results logging failed"), 1);
    EXPECT_THAT(log, testing::Contains(HasSubstr("Simulating to t=1.0000000000000000e+00")));
}

TEST(Results, HaveTheRealsThatAreNotLocal) {
    LoadedFmu fmu("scripted");
    EXPECT_EQ(fmu.rows(),
              Lines{"time[s],gain[-],mass[kg],doubleMass[kg],u[m/s],rawInput[-],F[1][N],"
                    "F[2][N],F[3][N],x[m],xAlias[m],y[-],P[1][Pa],P[2][Pa],P[3][Pa],P[Pa],"
                    "Q[1][-]"});
    fmiToolsSetVariableValue(fmu, "F[3]", "0.1");
    fmu.script("getReal(x)=value nan; getReal(y)=value -inf");
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    ASSERT_EQ(fmiToolsSimulateToT(fmu, 1e-3), 0);
    EXPECT_EQ(fmu.rows().at(1).substr(0, 70), "1.0000000000000000e-03,1.0000000000000000e+00,"
                                              "2.0000000000000000e+00,4");
    EXPECT_THAT(fmu.rows().at(1), HasSubstr(",1.0000000000000001e-01,nan,"));
    EXPECT_THAT(fmu.rows().at(1), HasSubstr(",-inf,"));
    EXPECT_THAT(readFile(fmu.resultsFile()), testing::Not(HasSubstr("\r")));
}

TEST(Results, KeepTheBeginningOfARowThatCouldNotBeRead) {
    LoadedFmu fmu("scripted");
    fmu.script("getReal(mass)@1=error");
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.5), -202);
    EXPECT_EQ(fmu.lastLines(1), Lines{"[Error] Results logging failed"});
    EXPECT_EQ(fmu.rows().at(1), "5.0000000000000000e-01,1.0000000000000000e+00,");
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.5), 0);
    EXPECT_THAT(fmu.rows().at(1),
                HasSubstr("e+00,5.0000000000000000e-01,1.0000000000000000e+00,2."));
}

TEST(Results, ThatCannotBeOpenedAreNoError) {
    for (const char* path : {"/no such/directory/r.csv", static_cast<const char*>(nullptr)}) {
        LoadedFmu fmu("scripted");
        EXPECT_EQ(fmiToolsSetResultsFile(fmu, path), 0);
        ASSERT_EQ(fmiToolsInitialize(fmu), 0);
        EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.5), 0);
        EXPECT_EQ(fmu.rows().size(), 1U);
        EXPECT_THAT(fmu.log(), testing::Not(testing::Contains(HasSubstr("[Error]"))));
    }
}

TEST(Log, TakesTheMessagesOfTheFmu) {
    LoadedFmu fmu("scripted");

    struct {
        const char* action;
        std::string line;
    } const cases[] = {
        {"log warning logEvents plain", "[FMU instance][logEvents][Warning] plain"},
        {"log 7 c odd status", "[FMU instance][c][Unknown] odd status"},
        {"log -1 c odd status", "[FMU instance][c][Unknown] odd status"},
        {"log pending null no category", "[FMU instance][(null)][Pending] no category"},
        {"log ok c null", "[FMU instance][c][OK] (null)"},
        {"logUnnamed discard c who", "[(null)][c][Discard] who"},
        {"logf error c %s has %d and %g", "[FMU instance][c][Error] text has 42 and 2.5"},
        {"logf ok c %%%% of %s", "[FMU instance][c][OK] % of text"},
        {"logf ok c %%s%%n %%%%", "[FMU instance][c][OK] %s%n %"},
        {"logLong fatal c 300", "[FMU instance][c][Fatal] " + std::string(255, 'x')},
        {"logLong ok c 1000000", "[FMU instance][c][OK] " + std::string(255, 'x')},
    };

    for (const auto& c : cases) {
        fmu.script((std::string("setInteger@1=") + c.action).c_str());
        fmiToolsSetIntegerVariableValue(fmu, "selector", 1);
        EXPECT_EQ(fmu.lastLines(2).front(), c.line) << c.action;
    }
    fmu.script("setInteger@1=log ok c %s%s%n%s%n");
    EXPECT_EQ(fmiToolsSetIntegerVariableValue(fmu, "selector", 1), 0); // Survived.
}

TEST(Log, GoesToStandardOutputWhileThereIsNoFile) {
    for (const char* path : {"/no such/directory/l.out", static_cast<const char*>(nullptr)}) {
        LoadedFmu fmu("scripted");
        EXPECT_EQ(fmiToolsSetLogFile(fmu, path), 0);
        testing::internal::CaptureStdout();
        fmiToolsSetRealVariableValue(fmu, "u", 1.0);
        const std::string output = testing::internal::GetCapturedStdout();
        EXPECT_THAT(withoutTimes(output),
                    ElementsAre("[FMITools][None][OK] Set input u=1.0000000000000000e+00"));
        EXPECT_EQ(output.front(), '[');
        EXPECT_THAT(fmu.log(), IsEmpty());
    }
}

std::string localTime(std::time_t time) {
    std::array<char, 200> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%c", std::localtime(&time))};
}

TEST(Log, TellsTheLocalTimeInTheFormOfTheLocale) {
    LoadedFmu fmu("scripted");
    const std::time_t begin = std::time(nullptr);
    fmiToolsSetRealVariableValue(fmu, "u", 1.0);
    std::vector<std::string> seconds;
    for (std::time_t second = begin - 1; second <= std::time(nullptr); ++second) {
        seconds.push_back('[' + localTime(second) + "][FMITools]");
    }
    const std::string line = readFile(fmu.logFile());
    EXPECT_TRUE(std::ranges::any_of(seconds, [&](auto& text) { return line.starts_with(text); }))
        << line;
}

/// True while something has the file open. Windows does not remove such a file.
bool isHeld(const std::filesystem::path& file) {
    if (std::filesystem::path::preferred_separator == '\\') {
        std::error_code error;
        return !std::filesystem::remove(file, error);
    }
    return std::ranges::any_of(std::filesystem::directory_iterator("/proc/self/fd"),
                               [&](const auto& descriptor) {
                                   std::error_code error;
                                   return std::filesystem::equivalent(descriptor, file, error);
                               });
}

TEST(Files, ThatAreReplacedStayOpenUntilTheEnd) {
    const TemporaryDirectory directory;
    LoadedFmu fmu("scripted");
    const std::vector before{fmu.logFile(), fmu.resultsFile()};
    fmiToolsSetRealVariableValue(fmu, "u", 1.0);
    EXPECT_EQ(fmiToolsSetLogFile(fmu, narrow(directory / "second.out").c_str()), 0);
    EXPECT_EQ(fmiToolsSetResultsFile(fmu, narrow(directory / "second.csv").c_str()), 0);
    ASSERT_EQ(fmiToolsInitialize(fmu), 0);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.5), 0);
    EXPECT_EQ(fmu.log().size(), 1U);
    EXPECT_EQ(fmu.rows().size(), 1U);
    EXPECT_EQ(lines(readFile(directory / "second.csv")).size(), 2U);
    EXPECT_THAT(before, testing::Each(testing::Truly(isHeld)));
    fmu.cleanUp();
    EXPECT_THAT(before, testing::Each(testing::Not(testing::Truly(isHeld))));
}

TEST(Files, ThatAnotherHandleHoldsAreLeftAloneAndTheReasonIsLogged) {
    LoadedFmu owner("scripted");
    LoadedFmu other("scripted");
    ASSERT_EQ(fmiToolsInitialize(owner), 0);
    const auto rows = owner.rows();
    EXPECT_EQ(fmiToolsSetResultsFile(other, narrow(owner.resultsFile()).c_str()), 0);
    EXPECT_EQ(other.lastLines(1),
              std::vector{"[Error] Failed to open results file " + narrow(owner.resultsFile()) +
                          ": another run or program is using it"});
    testing::internal::CaptureStdout();
    EXPECT_EQ(fmiToolsSetLogFile(other, narrow(owner.logFile()).c_str()), 0);
    fmiToolsSetRealVariableValue(other, "u", 1.0);
    EXPECT_THAT(withoutTimes(testing::internal::GetCapturedStdout()),
                ElementsAre("[FMITools][None][Error] Failed to open log file " +
                                narrow(owner.logFile()) + ": another run or program is using it",
                            "[FMITools][None][OK] Set input u=1.0000000000000000e+00"));
    EXPECT_EQ(owner.rows(), rows) << "neither emptied nor kept from readers";
    EXPECT_EQ(owner.log().back(), "[FMITools][None][OK] Initialised FMU");

    EXPECT_EQ(fmiToolsSetResultsFile(owner, narrow(owner.resultsFile()).c_str()), 0);
    EXPECT_EQ(owner.rows(), rows) << "its own it begins anew";
    owner.cleanUp();
    EXPECT_EQ(fmiToolsSetLogFile(other, narrow(owner.logFile()).c_str()), 0);
    EXPECT_THAT(owner.log(), IsEmpty()) << "free again";
}

TEST(CleanUp, EndsTheLogAndGoesOnOnStandardOutput) {
    for (const bool debug : {false, true}) {
        LoadedFmu fmu("scripted");
        const std::string script = narrow(fmu.unpacked().parent_path() / "") + "fmuclean";
        fmiToolsEnableDebugLogs(fmu, debug ? 1 : 0);
        testing::internal::CaptureStdout();
        fmu.cleanUp();
        auto output = withoutTimes(testing::internal::GetCapturedStdout());
        std::erase_if(output, [](const std::string& line) { return !line.starts_with("[FMI"); });
        EXPECT_EQ(fmu.lastLines(1), Lines{"[OK] Closing plugin"});
        EXPECT_EQ(output.front(), "[FMITools][None][OK] Closing library");
        EXPECT_EQ(output.back(), "[FMITools][None][OK] Closed plugin");
        ASSERT_EQ(output.size(), debug ? 3U : 2U);
        if (debug) {
            EXPECT_THAT(output[1],
                        testing::StartsWith("[FMITools][None][Debug] Calling cleanup script as: " +
                                            script));
            EXPECT_THAT(output[1], testing::EndsWith(" ."));
        }
    }
}

TEST(CleanUp, TerminatesAndFreesTheSlaveOnceAndRunsTheScript) {
    const TemporaryDirectory directory;
    const ScopedEnvironment record("SCRIPTED_FMU_RECORD", narrow(directory / "calls.txt"));
    const ScopedEnvironment target("CLEANED", narrow(directory / "cleaned.txt"));
    {
        LoadedFmu fmu("scripted", "with blank & more");
        const auto tools = fmu.unpacked().parent_path();
        writeFile(tools / "fmuclean.sh", "#!/bin/sh\necho \"$1\" > \"$CLEANED\"\n");
        writeFile(tools / "fmuclean.bat", "@echo %1> \"%CLEANED%\"\r\n");
        std::filesystem::permissions(tools / "fmuclean.sh", std::filesystem::perms::owner_all);
        fmu.cleanUp();
    }
    const auto calls = lines(readFile(directory / "calls.txt"));
    EXPECT_EQ(Lines(calls.end() - 3, calls.end()), (Lines{"terminate", "freeInstance", "unload"}));
    EXPECT_EQ(readFile(directory / "cleaned.txt").substr(0, 1), ".");
}

/// What the clean-up prints about a script whose command has that many characters.
std::vector<std::string> linesOfCleanUp(std::size_t commandLength) {
    const std::string suffix = std::filesystem::path::preferred_separator == '\\' ? ".bat" : ".sh";
    const std::string rest = "fmuclean" + suffix + " .";
    const std::string scripts(commandLength - rest.size() - 1, 'd');
    const TemporaryDirectory directory;
    FmiToolsInstance* fmu =
        fmiToolsLoadFmu(narrow(fmuPath("scripted")).c_str(), narrow(directory / "w").c_str(),
                        (scripts + "/").c_str());
    fmiToolsEnableDebugLogs(fmu, 1);
    testing::internal::CaptureStdout();
    fmiToolsCleanup(fmu);
    return withoutTimes(testing::internal::GetCapturedStdout());
}

TEST(CleanUp, CallsNoScriptByACommandThatDoesNotFit260Characters) {
    EXPECT_THAT(linesOfCleanUp(259), Contains(HasSubstr("[Debug] Calling cleanup script as: ddd")));
    EXPECT_THAT(linesOfCleanUp(260),
                ElementsAre("[FMITools][None][OK] Closing plugin",
                            "[FMITools][None][OK] Closing library",
                            HasSubstr("[Error] Cleanup script path is too long: ddd"),
                            "[FMITools][None][OK] Closed plugin"));
}

TEST(CleanUp, ToleratesFilesThatWereNeverSet) {
    const TemporaryDirectory directory;
    FmiToolsInstance* fmu =
        fmiToolsLoadFmu(narrow(fmuPath("scripted")).c_str(), narrow(directory / "w").c_str(), "");
    ASSERT_NE(fmu, nullptr);
    EXPECT_EQ(fmiToolsCleanup(fmu), 0);
}

} // namespace
