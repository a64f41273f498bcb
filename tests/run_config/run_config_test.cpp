#include "platform/path_style.h"
#include "run_config/build_information.h"
#include "run_config/fmi_solver_options.h"
#include "run_config/run_paths.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using run_config::FmiSolverOptions;
using run_config::FmuParameterMap;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;
using Tokens = std::vector<std::string>;

/// Parses tokens from a vector without a terminating entry, where reading too far is seen.
int parse(FmiSolverOptions& options, Tokens tokens) {
    std::vector<char*> argv;
    for (auto& token : tokens) {
        argv.push_back(token.data());
    }
    return options.parseArguments(static_cast<int>(argv.size()), argv.data());
}

/// The texts between single blanks.
Tokens tokensOf(const std::string& commandLine) {
    std::istringstream stream(commandLine);
    Tokens tokens;
    for (std::string token; std::getline(stream, token, ' ');) {
        tokens.push_back(token);
    }
    return tokens;
}

struct CommandLineCase {
    const char* commandLine;
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
    const std::string unreadable = found + "Reading parameter file: no.xml\n" +
                                   "Failed to parse FMU parameters file: no.xml\n" +
                                   "Failed to read parameter file: no.xml\n";
    const CommandLineCase cases[] = {
        {"a.fmu", {}, "", "", ""},
        {"-nolocal", {}, "", "", ""},
        {"-nolocal x", {}, "", "l", ""},
        {"a -nolocal -noarrayinputs -outputsarearrays", {}, "", "lio", ""},
        {"a -NoLocal --nolocal nolocal  ", {}, "", "", ""},
        {"a -parameter g 1 -parameter g 2", {{"g", "2"}}, "", "", ""},
        {"a -parameter x -5 -parameter  y", {{"x", "-5"}, {"", "y"}}, "", "", ""},
        {"a -parameter -x 3", {}, "", "", ""},
        {"a -parameter x", {}, "", "", ""},
        {"a -parameter", {}, "", "", ""},
        {"a -parameter gain -nolocal", {{"gain", "-nolocal"}}, "", "l", ""},
        {"a -parameter x -fmutype K", {{"x", "-fmutype"}}, "K", "", ""},
        {"a -fmutype FTIRE -fmutype KIND2", {}, "KIND2", "", ""},
        {"a -fmutype -nolocal", {}, "", "l", ""},
        {"a -fmutype K -fmutype", {}, "K", "", ""},
        {"a -parameterfile", {}, "", "", found},
        {"a -parameterfile -nolocal", {}, "", "l", found},
        {"a -parameterfile -parameter g 1", {{"g", "1"}}, "", "", found},
        {"a -parameterfile -parameterfile no.xml", {}, "", "", found + unreadable},
        {"a -parameter g 1 -parameterfile no.xml", {}, "", "", ignored + unreadable},
        {"a -parameterfile no.xml -parameter g 1", {}, "", "", unreadable + ignored},
    };
    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.commandLine);
        const auto tokens = tokensOf(expected.commandLine);
        FmiSolverOptions options;
        CaptureStdout();
        EXPECT_EQ(parse(options, tokens), 0);
        EXPECT_EQ(GetCapturedStdout(), expected.output);
        EXPECT_EQ(options.fmuPath(), tokens.front());
        EXPECT_EQ(options.parameters(), expected.parameters);
        EXPECT_EQ(options.fmuType(), expected.kind);
        EXPECT_EQ(switchesOf(options), expected.switches);
    }
}

std::string fileText(const std::string& version, const std::string& entries) {
    return "<?xml version='1.0'?><FMUSettings Version='" + version + "'><Parameters>" + entries +
           "</Parameters></FMUSettings>";
}

std::string entry(const std::string& name, const std::string& type, const std::string& value) {
    return "<Parameter Name='" + name + "' Type='" + type + "'>" + value + "</Parameter>";
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

TEST(CommandLine, TakesAnInstanceNameThatCanBePartOfFileNames) {
    for (const std::string name :
         {"front", "front left.2", "NULL", "COM", ".hidden", "fmitoolsx"}) {
        FmiSolverOptions options;
        EXPECT_EQ(parse(options, {"x.fmu", "-instance", "replaced", "-instance", name}), 0);
        EXPECT_EQ(options.instance(), name);
    }
    for (const Tokens& missing : {Tokens{"-instance"}, Tokens{"-instance", "-nolocal"}}) {
        FmiSolverOptions options;
        EXPECT_EQ(parse(options, missing), 0);
        EXPECT_EQ(options.instance(), "");
    }
    for (const std::string name :
         {"", ".", "..", "a/b", "a\\b", "/a", "C:", "a:b", "a*", "a\nb", "a\x7f", "a.", "a ", "nul",
          "Com1.x", "LPT\xc2\xb2", "FMITools", "fmitools"}) {
        FmiSolverOptions options;
        try {
            parse(options, {"x.fmu", "-instance", name});
            FAIL() << name;
        } catch (const std::runtime_error& error) {
            EXPECT_TRUE(std::string(error.what())
                            .starts_with("FMISolver - \"-instance " + name +
                                         "\" cannot be part of the names of "
                                         "files: "))
                << error.what();
        }
        EXPECT_EQ(options.instance(), "");
    }
}

TEST(ParametersFile, IsReadOrAnsweredWithItsFault) {
    const test_support::TemporaryDirectory directory;
    const auto path = test_support::narrow(directory / "p.xml");
    const std::string malformed = "Failed to parse FMU parameters file: " + path + "\n";
    const std::string version = "Version of FMU parameters file\n";
    const std::string one = entry("a", "Real", "1");
    const std::string types = entry("i", "Integer", " 2 ") +
                              entry("s", "String", "<![CDATA[<b]]>") +
                              entry("b", "Boolean", "x &amp; y") +
                              "<Parameter Type='Real'><!-- c --><x>9</x>7\r\n</Parameter>" +
                              "<Parameter Name='e' Type='String'/>" + entry("w", "String", "  ");
    const FileCase cases[] = {
        {fileText("1.0", one), true, {{"a", "1"}}, ""},
        {fileText("1", one), true, {{"a", "1"}}, ""},
        {fileText(" 1.000x", one), true, {{"a", "1"}}, ""},
        {fileText("1e0", one), true, {{"a", "1"}}, ""},
        {fileText("1.1", one), false, {}, version},
        {fileText("", one), false, {}, version},
        {fileText("new", one), false, {}, version},
        {"<FMUSettings/>", false, {}, version},
        {"<Settings Version='1.0'/>", false, {}, version},
        {"<FMUSettings Version='1.0'/>", true, {}, ""},
        {"<Other/><FMUSettings Version='1.0'/><FMUSettings Version='2'/>", true, {}, ""},
        {"", false, {}, malformed},
        {"<FMUSettings Version='1.0'>", false, {}, malformed},
        {nested(1'000'000), false, {}, malformed},
        {fileText("1.0", types),
         true,
         {{"i", " 2 "}, {"s", "<b"}, {"b", "x & y"}, {"", "7\n"}, {"e", ""}, {"w", ""}},
         ""},
        {fileText("1.0", one + entry("a", "Real", "3")), true, {{"a", "3"}}, ""},
        {fileText("1.0", entry("a", "real", "1")),
         true,
         {},
         "Ignoring parameter a of unknown type real\n"},
        {fileText("1.0", "<Parameter Name='b'/>" + one),
         true,
         {{"a", "1"}},
         "Ignoring parameter b of unknown type \n"},
        {fileText("1.0", "</Parameters><Parameters>" + one), true, {}, ""},
        {"<!DOCTYPE l [<!ENTITY e 'x'>]>" + fileText("1.0", entry("a", "String", "&e;")),
         true,
         {{"a", "&e;"}},
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
    add("1.xml", fileText("1.0", entry("a", "Real", "1") + entry("b", "Real", "1")));
    add("2.xml", fileText("3.0", entry("a", "Real", "2")));
    add("3.xml", fileText("1.0", entry("b", "Real", "3")));
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
    ToolChain tools{true, false, nullptr, 2021, 1929, true, true, true, true};
    EXPECT_EQ(environmentText(tools),
              "Compilation Environment: Windows; Intel Compiler 2021 - No Visual Studio (1929); "
              "x86_32; Release; Multithread Release DLL (/MD)");
    tools = {true, false, "GCC 12.2.0", 0, 0, true, true, true, false};
    EXPECT_EQ(environmentText(tools), "Compilation Environment: Windows; <unknown compiler>; "
                                      "x86_32; Release; <Unknown runtime>");
    tools = {false, true, "GCC 12.2.0", 0, 0, true, true, true, false};
    EXPECT_EQ(environmentText(tools), "Compilation Environment: Linux; GCC 12.2.0; x86_64; "
                                      "Release; <Unknown runtime>");
    EXPECT_TRUE(std::string(buildValues().commit).size() == 7);
}

TEST(BuildInformation, SaysOfThisBuildWhatItIs) {
    const std::string text = run_config::environmentText(run_config::toolChain());
#ifdef _WIN32
    EXPECT_TRUE(text.starts_with("Compilation Environment: Windows; ")) << text;
    EXPECT_NE(text.find("; x86_32; "), std::string::npos) << text;
#else
    EXPECT_TRUE(text.starts_with("Compilation Environment: Linux; ")) << text;
    EXPECT_NE(text.find("; x86_64; "), std::string::npos) << text;
    EXPECT_EQ(text.find("<unknown compiler>"), std::string::npos) << text;
#endif
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
        EXPECT_EQ(run_config::runFileStem(expected.style, expected.directory, expected.fmu),
                  expected.stem);
    }
    using run_config::scriptDirectoryFor;
    EXPECT_EQ(scriptDirectoryFor(platform::windowsPaths, "C:\\runs\\case.xml"),
              "C:\\runs/FMITools/");
    EXPECT_EQ(scriptDirectoryFor(platform::windowsPaths, "C:\\a/b"), "C:\\a/FMITools/");
    EXPECT_EQ(scriptDirectoryFor(platform::windowsPaths, ""), "/FMITools/");
    EXPECT_EQ(scriptDirectoryFor(platform::posixPaths, "/runs/case.xml"), "/runs/FMITools/");
    EXPECT_EQ(scriptDirectoryFor(platform::posixPaths, "case.xml"), "case.xml/FMITools/");
    EXPECT_EQ(run_config::runFileStem(platform::posixPaths, "/out", "m/tyre.fmu", "left"),
              "/out/tyre_left");
    const auto folders =
        run_config::unpackDirectories(platform::posixPaths, "/work", "/out/tyre_left", "left");
    EXPECT_EQ(folders.first + " " + folders.others, "/work/left /work/left");
    const auto plain = run_config::unpackDirectories(platform::posixPaths, "/work", "/o/tyre", "");
    EXPECT_EQ(plain.first + " " + plain.others, "/work /work/tyre");
}

} // namespace
