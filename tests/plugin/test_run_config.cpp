#include "platform/path_style.h"
#include "run_config/build_information.h"
#include "run_config/fmi_solver_options.h"
#include "solver_plugin/run_paths.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using run_config::FmiSolverOptions;
using run_config::FmuParameterMap;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;
using Tokens = std::vector<std::string>;

/// Parses `tokens` from a vector without a terminating entry, where reading too far is seen.
int parse(FmiSolverOptions& options, Tokens tokens) {
    std::vector<char*> argv;
    for (auto& token : tokens) {
        argv.push_back(token.data());
    }
    return options.parseArguments(static_cast<int>(argv.size()), argv.data());
}

struct CommandLineCase {
    Tokens tokens;
    FmuParameterMap parameters;
    std::string kind;
    std::string switches; ///< Of the options that differ from their defaults: l, i, o.
    std::string output;
};

std::string switchesOf(const FmiSolverOptions& options) {
    return std::string(options.includeLocal() ? "" : "l") + (options.arrayInputs() ? "" : "i") +
           (options.outputsAreArrays() ? "o" : "");
}

TEST(CommandLine, EveryTokenIsExaminedInTurn) {
    const std::string ignored =
        "Ignoring individual parameter setting as parameterfile is found.\n";
    const std::string found = "Found parameter file\n";
    const std::string unreadable = found + "Reading parameter file: none.xml\n" +
                                   "Failed to parse FMU parameters file: none.xml\n" +
                                   "Failed to read parameter file: none.xml\n";
    const CommandLineCase cases[] = {
        {{"a.fmu"}, {}, "", "", ""},
        {{"-nolocal"}, {}, "", "", ""},
        {{"-nolocal", "x"}, {}, "", "l", ""},
        {{"a", "-nolocal", "-noarrayinputs", "-outputsarearrays"}, {}, "", "lio", ""},
        {{"a", "-NoLocal", "--nolocal", "nolocal", ""}, {}, "", "", ""},
        {{"a", "-parameter", "g", "1", "-parameter", "g", "2"}, {{"g", "2"}}, "", "", ""},
        {{"a", "-parameter", "x", "-5", "-parameter", "", " "},
         {{"x", "-5"}, {"", " "}},
         "",
         "",
         ""},
        {{"a", "-parameter", "-x", "3"}, {}, "", "", ""},
        {{"a", "-parameter", "x"}, {}, "", "", ""},
        {{"a", "-parameter"}, {}, "", "", ""},
        {{"a", "-parameter", "gain", "-nolocal"}, {{"gain", "-nolocal"}}, "", "l", ""},
        {{"a", "-parameter", "x", "-fmutype", "K"}, {{"x", "-fmutype"}}, "K", "", ""},
        {{"a", "-fmutype", "FTIRE", "-fmutype", "KIND2"}, {}, "KIND2", "", ""},
        {{"a", "-fmutype", "-nolocal"}, {}, "", "l", ""},
        {{"a", "-fmutype", "K", "-fmutype"}, {}, "K", "", ""},
        {{"a", "-parameterfile"}, {}, "", "", found},
        {{"a", "-parameterfile", "-nolocal"}, {}, "", "l", found},
        {{"a", "-parameterfile", "-parameter", "g", "1"}, {{"g", "1"}}, "", "", found},
        {{"a", "-parameterfile", "-parameterfile", "none.xml"}, {}, "", "", found + unreadable},
        {{"a", "-parameter", "g", "1", "-parameterfile", "none.xml"},
         {},
         "",
         "",
         ignored + unreadable},
        {{"a", "-parameterfile", "none.xml", "-parameter", "g", "1"},
         {},
         "",
         "",
         unreadable + ignored},
    };
    for (const auto& expected : cases) {
        SCOPED_TRACE(testing::PrintToString(expected.tokens));
        FmiSolverOptions options;
        CaptureStdout();
        EXPECT_EQ(parse(options, expected.tokens), 0);
        EXPECT_EQ(GetCapturedStdout(), expected.output);
        EXPECT_EQ(options.fmuPath(), expected.tokens.front());
        EXPECT_EQ(options.parameters(), expected.parameters);
        EXPECT_EQ(options.fmuType(), expected.kind);
        EXPECT_EQ(switchesOf(options), expected.switches);
    }
}

TEST(CommandLine, WithoutTokensIsAnError) {
    FmiSolverOptions options;
    try {
        parse(options, {});
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "FMISolver - Incorrect number of command line arguments");
    }
}

TEST(CommandLine, AnotherOneAddsToTheParameters) {
    FmiSolverOptions options;
    parse(options, {"a", "-parameter", "x", "1", "-parameter", "y", "1"});
    parse(options, {"b", "-parameter", "y", "2"});
    EXPECT_EQ(options.fmuPath(), "b");
    EXPECT_EQ(options.parameters(), (FmuParameterMap{{"x", "1"}, {"y", "2"}}));
}

std::string fileText(const std::string& version, const std::string& entries) {
    return "<?xml version='1.0'?><FMUSettings Version='" + version + "'><Parameters>" + entries +
           "</Parameters></FMUSettings>";
}

std::string nested(std::size_t depth) {
    std::string text;
    for (std::size_t i = 0; i < depth; ++i) {
        text += "<a>";
    }
    return text;
}

struct FileCase {
    std::string content;
    bool read;
    FmuParameterMap parameters;
    std::string output;
};

TEST(ParametersFile, IsReadOrAnsweredWithItsFault) {
    const test_support::TemporaryDirectory directory;
    const auto path = test_support::narrow(directory / "p.xml");
    const std::string malformed = "Failed to parse FMU parameters file: " + path + "\n";
    const std::string version = "Version of FMU parameters file\n";
    const auto unknown = [](const std::string& name, const std::string& type) {
        return "Ignoring parameter " + name + " of unknown type " + type + "\n";
    };
    const std::string one = "<Parameter Name='a' Type='Real'>1</Parameter>";
    const FileCase cases[] = {
        {fileText("1.0", one), true, {{"a", "1"}}, ""},
        {fileText("1", one), true, {{"a", "1"}}, ""},
        {fileText(" 1.000x", one), true, {{"a", "1"}}, ""},
        {fileText("1e0", one), true, {{"a", "1"}}, ""},
        {fileText("1.1", one), false, {}, version},
        {fileText("2", one), false, {}, version},
        {fileText("", one), false, {}, version},
        {fileText("new", one), false, {}, version},
        {"<FMUSettings/>", false, {}, version},
        {"<Settings Version='1.0'/>", false, {}, version},
        {"<FMUSettings Version='1.0'/>", true, {}, ""},
        {"<Other/><FMUSettings Version='1.0'/><FMUSettings Version='2'/>", true, {}, ""},
        {"", false, {}, malformed},
        {"<FMUSettings Version='1.0'>", false, {}, malformed},
        {nested(1'000'000), false, {}, malformed},
        {fileText("1.0", nested(100'000)), false, {}, malformed},
        {fileText("1.0",
                  "<Parameter Name='a' Type='real'>1</Parameter><Parameter Name='b'/>" + one),
         true,
         {{"a", "1"}},
         unknown("a", "real") + unknown("b", "")},
        {fileText("1.0", "<Parameter Name='i' Type='Integer'> 2 </Parameter>"
                         "<Parameter Name='s' Type='String'><![CDATA[a<b]]></Parameter>"
                         "<Parameter Name='b' Type='Boolean'>x &amp; y</Parameter>"
                         "<Parameter Type='Real'><!-- c --><x>9</x>7\r\n</Parameter>"
                         "<Parameter Name='e' Type='String'/>"
                         "<Parameter Name='w' Type='String'>  </Parameter>"),
         true,
         {{"i", " 2 "}, {"s", "a<b"}, {"b", "x & y"}, {"", "7\n"}, {"e", ""}, {"w", ""}},
         ""},
        {fileText("1.0", one + "<Parameter Name='a' Type='Real'>3</Parameter>"),
         true,
         {{"a", "3"}},
         ""},
        {"<FMUSettings Version='1.0'><Parameters/><Parameters>" + one +
             "</Parameters></FMUSettings>",
         true,
         {},
         ""},
        {"<!DOCTYPE l [<!ENTITY e 'x'><!ENTITY f '&e;&e;'>]>" +
             fileText("1.0", "<Parameter Name='a' Type='String'>&f;</Parameter>"),
         true,
         {{"a", "&f;"}},
         ""},
    };
    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.content.substr(0, 300));
        test_support::writeFile(directory / "p.xml", expected.content);
        FmiSolverOptions options;
        CaptureStdout();
        EXPECT_EQ(options.readParametersFile(path), expected.read);
        EXPECT_EQ(GetCapturedStdout(), expected.output);
        EXPECT_EQ(options.parameters(), expected.parameters);
    }
}

TEST(ParametersFile, LaterFilesReplaceAndBrokenOnesLeaveWhatIsThere) {
    const test_support::TemporaryDirectory directory(u8"Größe & Maß");
    Tokens tokens{"a.fmu", "-parameter", "c", "9"};
    const auto add = [&](const char* name, const std::string& content) {
        test_support::writeFile(directory / name, content);
        tokens.insert(tokens.end(), {"-parameterfile", test_support::narrow(directory / name)});
    };
    add("1.xml", fileText("1.0", "<Parameter Name='a' Type='Real'>1</Parameter>"
                                 "<Parameter Name='b' Type='Real'>1</Parameter>"));
    add("2.xml", fileText("3.0", "<Parameter Name='a' Type='Real'>2</Parameter>"));
    add("3.xml", fileText("1.0", "<Parameter Name='b' Type='Real'>3</Parameter>"));
    FmiSolverOptions options;
    CaptureStdout();
    parse(options, tokens);
    const auto output = test_support::lines(GetCapturedStdout());
    EXPECT_EQ(options.parameters(), (FmuParameterMap{{"a", "1"}, {"b", "3"}}));
    ASSERT_EQ(output.size(), 9U);
    EXPECT_EQ(output[5], "Version of FMU parameters file");
    EXPECT_EQ(output[6], "Failed to read parameter file: " + tokens[7]);
}

TEST(BuildInformation, NamesTheBuildAndTheToolChain) {
    using namespace run_config;
    EXPECT_EQ(buildText({"1.2.3", "", "Jan  5 2025", "main", "0123456"}),
              "1.2.3; Compiled on Jan  5 2025; Branch main;");
    EXPECT_EQ(buildText({"1.2.3", "-rc1", "Jan  5 2025", "main", "0123456"}),
              "1.2.3-rc1; Compiled on Jan  5 2025; Branch main;");
    EXPECT_EQ(environmentText({}), "Compilation Environment: <unknown os>; <unknown compiler>; "
                                   "<unknown bits>; <unknown config>; <Unknown runtime>");
    ToolChain tools{true, 2021, 1929, true, true, true, true};
    EXPECT_EQ(environmentText(tools),
              "Compilation Environment: Windows; Intel Compiler 2021 - No Visual Studio (1929); "
              "x86_32; Release; Multithread Release DLL (/MD)");
    tools.microsoftVersion = 0;
    tools.release = false;
    EXPECT_EQ(environmentText(tools),
              "Compilation Environment: Windows; Intel Compiler 2021 - No Visual Studio; "
              "x86_32; <unknown config>; Multithread Release DLL (/MD)");
    EXPECT_NE(environmentText(toolChain()).find("; x86_32; "), std::string::npos);
    EXPECT_TRUE(std::string(buildValues().commit).size() == 7);
}

TEST(RunPaths, FollowTheStyleOfThePlatform) {
    const struct {
        const platform::PathStyle& style;
        std::string directory, fmu, stem;
    } cases[] = {
        {platform::windowsPaths, "C:/out", "D:/models/tyre.fmu", "C:/out\\tyre"},
        {platform::windowsPaths, "C:/out/", "D:\\models\\tyre.fmu", "C:/out/tyre"},
        {platform::windowsPaths, "", "tyre.fmu", "tyre"},
        {platform::windowsPaths, "C:\\o", "model", "C:\\o\\mode"},
        {platform::windowsPaths, "C:\\run.1\\o", "m/model", "C:\\run"},
        {platform::windowsPaths, "C:\\o", "", "C:\\o\\"},
        {platform::posixPaths, "/out", "/models/tyre.fmu", "/out/tyre"},
        {platform::posixPaths, "/out/", "models/ty.re.fmu", "/out/ty.re"},
        {platform::posixPaths, "/out", "m\\tyre.fmu", "/out/m\\tyre"},
        {platform::posixPaths, "/run.1/o", "model", "/run"},
    };

    for (const auto& expected : cases) {
        EXPECT_EQ(solver_plugin::runFileStem(expected.style, expected.directory, expected.fmu),
                  expected.stem);
    }
    using solver_plugin::scriptDirectoryFor;
    EXPECT_EQ(scriptDirectoryFor(platform::windowsPaths, "C:\\runs\\case.xml"),
              "C:\\runs/FMITools/");
    EXPECT_EQ(scriptDirectoryFor(platform::windowsPaths, "C:\\a/b"), "C:\\a/FMITools/");
    EXPECT_EQ(scriptDirectoryFor(platform::windowsPaths, ""), "/FMITools/");
    EXPECT_EQ(scriptDirectoryFor(platform::posixPaths, "/runs/case.xml"), "/runs/FMITools/");
    EXPECT_EQ(scriptDirectoryFor(platform::posixPaths, "case.xml"), "case.xml/FMITools/");
}

} // namespace
