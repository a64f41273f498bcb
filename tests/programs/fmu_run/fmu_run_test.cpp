#include "platform/claim.h"
#include "platform/output_file.h"
#include "support/archive_writer.h"
#include "support/run_program.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <sstream>

using test_support::fmuPath;
using test_support::lines;
using test_support::narrow;
using test_support::ProgramResult;
using test_support::readFile;
using test_support::RunOptions;
using test_support::runProgram;
using test_support::writeFile;

namespace {

using Arguments = std::vector<std::string>;

/// Runs fmu_run in a directory of its own.
class FmuRun : public testing::Test {
  protected:
    ProgramResult run(const Arguments& arguments, RunOptions options = {}) {
        options.workingDirectory = directory.path();
        return runProgram(test_support::programPath("fmu_run"), arguments, options);
    }

    /// Simulates scripted.fmu with further arguments.
    ProgramResult runScripted(const Arguments& arguments, const RunOptions& options = {}) {
        Arguments all{scripted};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return run(all, options);
    }

    /// A column of a results file by its header.
    std::vector<double> column(const std::string& header,
                               const std::string& file = "scripted.csv") {
        const auto rows = lines(readFile(directory / file));
        std::vector<double> values;
        std::size_t position = std::string::npos;
        for (const auto& row : rows) {
            std::vector<std::string> cells;
            std::istringstream stream(row);
            for (std::string cell; std::getline(stream, cell, ',');) {
                cells.push_back(cell);
            }
            if (position == std::string::npos) {
                const auto found = std::find(cells.begin(), cells.end(), header);
                position = static_cast<std::size_t>(found - cells.begin());
            }
            values.push_back(position < cells.size() ? std::strtod(cells[position].c_str(), nullptr)
                                                     : -999.0);
        }
        values.erase(values.begin());
        return values;
    }

    /// An archive with a model description of these variables, and no library.
    void writeModel(const std::string& name, const std::string& description,
                    const std::string& variables,
                    const std::vector<test_support::ArchiveEntry>& others = {},
                    const std::string& stepSize = "0.1") {
        std::vector<test_support::ArchiveEntry> entries{
            {"modelDescription.xml",
             R"(<fmiModelDescription fmiVersion="2.0" modelName="m" guid="g" description=")" +
                 description + R"("><CoSimulation modelIdentifier="m"/><DefaultExperiment )" +
                 R"(startTime="0" stopTime="1" stepSize=")" + stepSize + R"("/><ModelVariables>)" +
                 variables + "</ModelVariables><ModelStructure/></fmiModelDescription>"}};
        entries.insert(entries.end(), others.begin(), others.end());
        test_support::writeArchive(directory / (name + ".fmu"), entries);
    }

    static std::string realParameter(const std::string& name, const std::string& description,
                                     int valueReference = 0) {
        return R"(<ScalarVariable causality="parameter" variability="fixed" name=")" + name +
               R"(" description=")" + description + R"(" valueReference=")" +
               std::to_string(valueReference) + R"("><Real start="1"/></ScalarVariable>)";
    }

    bool exists(const std::string& file) { return std::filesystem::exists(directory / file); }

    std::string log() { return readFile(directory / "scripted.out"); }

    test_support::TemporaryDirectory directory;
    std::string scripted = narrow(fmuPath("scripted"));
};

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

void expectNear(const std::vector<double>& actual, const std::vector<double>& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        EXPECT_NEAR(actual[i], expected[i], 1e-12) << "row " << i;
    }
}

} // namespace

TEST_F(FmuRun, DefaultExperimentFillsResultsAndLogInTheCurrentDirectory) {
    const auto result = runScripted({});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    EXPECT_EQ(result.error, "");
    EXPECT_TRUE(contains(result.output, "10 steps"));
    const auto times = column("time[s]");
    ASSERT_EQ(times.size(), 11U);
    EXPECT_EQ(times.back(), 1.0);
    EXPECT_EQ(times[3], 3 * 0.1);
    EXPECT_TRUE(contains(log(), "][FMITools][None][OK] Closing plugin\n"));
    EXPECT_EQ(runScripted({"--quiet"}).output, "");
}

TEST_F(FmuRun, TyreCarriesItsStaticLoad) {
    const auto result = run({narrow(fmuPath("tyre")), "--stop-time", "0.5", "--start-value",
                             "hubPosition[3]", "0.28", "--start-value", "radius", "0.3",
                             "--start-value", "verticalStiffness", "150000"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    const auto force = column("force[3][N]", "tyre.csv");
    ASSERT_EQ(force.size(), 501U);
    EXPECT_NEAR(force.back(), 150000 * 0.02, 1e-6);
}

TEST_F(FmuRun, ShockAbsorberResistsItsVelocity) {
    writeFile(directory / "motion.csv", "time,displacement,velocity\n0,0,0.2\n0.1,0.02,0.2\n");
    const auto result = run(
        {narrow(fmuPath("shock_absorber")), "--stop-time", "0.1", "--input-file", "motion.csv"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    EXPECT_GT(std::abs(column("force[N]", "shock_absorber.csv").back()), 100.0);
}

TEST_F(FmuRun, GridIsReachedExactlyWhateverTheInterval) {
    struct Case {
        Arguments arguments;
        std::vector<double> times;
    };

    const std::vector<Case> cases{
        {{"--output-interval", "0.3"}, {0, 0.3, 0.6, 3 * 0.3, 1}},
        {{"--start-time", "0.25", "--output-interval", "0.5"}, {0.25, 0.75, 1}},
        {{"--output-interval", "5"}, {0, 1}},
        {{"--stop-time", "0.3"}, {0, 0.1, 0.2, 0.3}}, // 3 * 0.1 lies a rounding beyond 0.3
        {{"--stop-time", "0"}, {0}}};
    for (const auto& [arguments, times] : cases) {
        EXPECT_EQ(runScripted(arguments).exitStatus, 0);
        EXPECT_EQ(column("time[s]"), times) << arguments[1];
    }
}

TEST_F(FmuRun, InputsAreInterpolatedWhenContinuousAndHeldOtherwise) {
    writeFile(directory / "in.csv", "t,u,\"F[1]\",gain,selector,label,mode\r\n"
                                    "0,0,10,1,1,first,1\r\n"
                                    "0.4,4,10,3,2,\"b, c\",3\r\n");
    const auto result =
        runScripted({"--input-file", "in.csv", "--stop-time", "0.6", "--output-interval", "0.2"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    // A row shows what held during the interval before it.
    expectNear(column("u[m/s]"), {0, 0, 2, 4});
    expectNear(column("gain[-]"), {1, 1, 1, 3});
    expectNear(column("x[m]"), {0, 0, 0.4, 0.4 + 3 * 4 * 0.2});
    expectNear(column("P[1][Pa]"), {10, 10, 10, 10});
    for (const auto* line :
         {"Set input selector=1\n", "Set input selector=2\n", "Set input label=first\n",
          "Set input label=b, c\n", "Set input mode=3\n"}) {
        EXPECT_TRUE(contains(log(), line)) << line;
    }
}

TEST_F(FmuRun, StartValuesOfEachTypeReachTheFmu) {
    const auto result = runScripted({"--start-value", "mass", "-2.5e0", "--start-value", "offset",
                                     "-7", "--start-value", "label", "two words"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    EXPECT_EQ(column("mass[kg]").front(), -2.5);
    EXPECT_TRUE(contains(log(), "Set input offset=-7\n"));
    EXPECT_TRUE(contains(log(), "Set input label=two words\n"));
}

TEST_F(FmuRun, FailedFmuGetsStatusOneNamesTheLogAndKeepsItsRows) {
    struct Case {
        std::string script;
        std::string message;
        std::size_t rows;
    };

    const std::vector<Case> cases{
        {"doStep@4=error", "its step to t = 0.4 s failed; fmi2DoStep returned Error;", 4},
        {"doStep@2=discard", "its step to t = 0.2 s failed; fmi2DoStep returned Discard;", 2},
        {"doStep@1=warning", "; fmi2DoStep returned Warning;", 1},
        {"enterInitializationMode=error",
         "it could not enter its initialisation; fmi2EnterInitializationMode returned Error;", 0},
        {"exitInitializationMode=fatal",
         "its initialisation failed; fmi2ExitInitializationMode returned Fatal;", 0},
        {"setReal(u)=error",
         "it refused the value 3 for the variable 'u'; fmi2SetReal returned Error;", 0},
        {"doStep=log error x Too slippery;doStep=error", "says: [", 1}};
    for (const auto& [script, message, rows] : cases) {
        const auto result =
            runScripted({"--start-value", "script", script, "--start-value", "u", "3"});
        EXPECT_EQ(result.exitStatus, 1) << script;
        EXPECT_TRUE(contains(result.error, message)) << result.error;
        EXPECT_TRUE(contains(result.error, "its log 'scripted.out' says: [")) << result.error;
        EXPECT_EQ(lines(result.error).size(), 1U) << result.error;
        EXPECT_EQ(contains(script, "slippery"), contains(result.error, "][Error] Too slippery\n"))
            << result.error;
        EXPECT_EQ(lines(readFile(directory / "scripted.csv")).size(), rows + 1) << script;
        EXPECT_TRUE(contains(log(), "Closing plugin")) << script;
    }
}

TEST_F(FmuRun, RefusedInstantiationShowsWhatTheFmuSaid) {
    for (const Arguments& arguments : {Arguments{}, Arguments{"--start-value", "u", "1"}}) {
        const auto result = runScripted(
            arguments,
            {.environment = {
                 {"SCRIPTED_FMU_SCRIPT",
                  "instantiate=log error logStatusError No licence; instantiate=refuse"}}});
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_TRUE(contains(result.error, "[Error] No licence\n")) << result.error;
        EXPECT_TRUE(contains(result.error, "failed: it refused to be instantiated"))
            << result.error;
        EXPECT_EQ(lines(result.error).size(), 1U) << result.error;
    }
}

TEST_F(FmuRun, InterruptAndTimeoutEndBetweenTwoSteps) {
    const Arguments slow{"--start-value", "script", "doStep=sleep 0.02", "--stop-time", "1000"};
    Arguments limited = slow;
    limited.insert(limited.end(), {"--timeout", "0.5"});
    const auto timedOut = runScripted(limited);
    EXPECT_EQ(timedOut.exitStatus, 130);
    EXPECT_TRUE(contains(timedOut.error, "stopped after --timeout 0.5 s at t = "))
        << timedOut.error;
    EXPECT_TRUE(contains(log(), "Closing plugin"));
    if (!test_support::canInterrupt) {
        return;
    }
    std::filesystem::remove(directory / "scripted.csv");
    const auto interrupted =
        runScripted(slow, {.interruptWhen = [this] {
                        return lines(readFile(directory / "scripted.csv")).size() > 3;
                    }});
    EXPECT_EQ(interrupted.exitStatus, 130);
    EXPECT_FALSE(interrupted.crashed);
    EXPECT_TRUE(contains(interrupted.error, "interrupted at t = ")) << interrupted.error;
    EXPECT_TRUE(contains(log(), "Closing plugin"));
    EXPECT_TRUE(readFile(directory / "scripted.csv").ends_with('\n'));
}

TEST_F(FmuRun, TableListsTheModelAndItsVariables) {
    const auto result = runScripted({"--info"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    for (const auto* text : {"Model               Scripted slave\n", "Co-Simulation",
                             "0 s to 1 s, step 0.1 s", "15 output", "1 calculatedParameter"}) {
        EXPECT_TRUE(contains(result.output, text)) << text << " is not in " << result.output;
    }
    const auto rows = lines(result.output);
    const auto row = [&](const std::string& name) {
        return *std::find_if(rows.begin(), rows.end(),
                             [&](const auto& each) { return each.starts_with(name + " "); });
    };
    EXPECT_EQ(row("mass").find("kg"), row("Name").find("Unit"));
    EXPECT_EQ(row("F[1]").find("Comes out"), row("Name").find("Description"));
    EXPECT_EQ(row("F[1]").find("N "), row("Name").find("Unit"));
    EXPECT_FALSE(exists("scripted.csv"));
}

TEST_F(FmuRun, JsonSaysTheSameForPrograms) {
    const auto result = runScripted({"--info=json"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    const auto json = nlohmann::json::parse(result.output);
    EXPECT_EQ(json["modelName"], "Scripted slave");
    EXPECT_EQ(json["defaultExperiment"]["stepSize"], 0.1);
    EXPECT_EQ(json["platforms"].size(), 1U);
    const auto variable = [&](const std::string& name) {
        const auto& all = json["variables"];
        return *std::find_if(all.begin(), all.end(),
                             [&](const auto& each) { return each["name"] == name; });
    };
    EXPECT_EQ(variable("mass")["start"], 2.0);
    EXPECT_EQ(variable("mass")["unit"], "kg");
    EXPECT_EQ(variable("enabled")["start"], true);
    EXPECT_EQ(variable("label")["start"], "unset");
    EXPECT_EQ(variable("mode")["start"], 1);
    EXPECT_TRUE(variable("y")["start"].is_null());
    EXPECT_EQ(variable("gain")["variability"], "tunable");
}

TEST_F(FmuRun, ParametersFileHoldsEveryParameterWithItsStartValue) {
    const auto result = runScripted({"--write-parameters"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(result.output.c_str()));
    const auto root = document.child("FMUSettings");
    EXPECT_EQ(root.attribute("Version").as_double(), 1.0);
    std::vector<std::vector<std::string>> found;
    for (const auto& each : root.child("Parameters").children("Parameter")) {
        found.push_back(
            {each.attribute("Name").value(), each.attribute("Type").value(), each.child_value()});
    }
    const std::vector<std::vector<std::string>> expected{{"gain", "Real", "1"},
                                                         {"mass", "Real", "2"},
                                                         {"offset", "Integer", "3"},
                                                         {"script", "String", ""}};
    EXPECT_EQ(found, expected);
    EXPECT_TRUE(contains(result.output, "<!-- enabled is left out: offset has its value ref"));
    EXPECT_TRUE(contains(result.output, "<!-- Mass for the energy [kg], start value 2 -->"));
}

TEST_F(FmuRun, ValidationCountsErrors) {
    writeFile(directory / "no.fmu", "this is no archive");

    struct Case {
        std::string model;
        std::string script;
        int errors;
        std::string finding;
    };

    const std::vector<Case> cases{
        {scripted, "", 0, "0 errors, 2 warnings"}, // of the Booleans
        {scripted, "", 0, "the Boolean 'active' has the value reference of 'selector'"},
        {narrow(fmuPath("tyre")), "", 0, "0 errors, 0 warnings"},
        {narrow(fmuPath("shock_absorber")), "", 0, "0 errors, 0 warnings"},
        {narrow(fmuPath("scripted_missing_function")), "", 1, " has no function fmi2DoStep, which"},
        {narrow(fmuPath("scripted_missing_function")), "", 1, " has no function fmi2GetFMUstate, "},
        {scripted, "exitInitializationMode=error", 1, "cannot be initialised"},
        {scripted, "doStep=discard", 1, "the first step, to t = 0.1 s, failed"},
        {scripted, "doStep=log warning logStatusWarning Too hot", 0, "][Warning] Too hot"},
        {narrow(fmuPath("scripted_other_platform")), "", 1, "export it for "},
        {narrow(fmuPath("scripted_lacks_library")), "", 1, "its library does not load: "},
        {"no.fmu", "", 1, "error: cannot use 'no.fmu'"}};
    for (const auto& [model, script, errors, finding] : cases) {
        const auto result =
            run({model, "--validate"}, {.environment = {{"SCRIPTED_FMU_SCRIPT", script}}});
        EXPECT_EQ(result.exitStatus, errors) << result.output;
        EXPECT_TRUE(contains(result.output, finding)) << finding << " is not in " << result.output;
        EXPECT_FALSE(contains(result.error, "fmu_run: ")) << result.error;
    }
}

TEST_F(FmuRun, TextsOfAnFmuAreShownAndNotObeyed) {
    const std::string hostile = "a&#x9B;31mb&#x7F;c&#x9D;0;d&#xD;";
    writeModel("hostile", hostile, realParameter(hostile + "name", hostile));
    const std::string text = "a\xC2\x9B"
                             "31mb\x7F"
                             "c\xC2\x9D"
                             "0;d\r";
    const std::string shown = "a\\x9B31mb\\x7Fc\\x9D0;d";
    for (const auto* option : {"--info", "--info=json", "--write-parameters", "--validate"}) {
        const auto result = run({"hostile.fmu", option});
        for (const auto* raw : {"\xC2\x9B", "\xC2\x9D", "\x7F"}) {
            EXPECT_FALSE(contains(result.output + result.error, raw)) << option;
        }
    }
    EXPECT_TRUE(contains(run({"hostile.fmu", "--info"}).output, shown));
    const auto json = nlohmann::json::parse(run({"hostile.fmu", "--info=json"}).output);
    EXPECT_EQ(json["description"], text);
    EXPECT_EQ(json["variables"][0]["name"], text + "name");
    pugi::xml_document document;
    const auto parameters = run({"hostile.fmu", "--write-parameters"}).output;
    ASSERT_TRUE(document.load_string(parameters.c_str())) << parameters;
    EXPECT_EQ(
        document.child("FMUSettings").first_child().child("Parameter").attribute("Name").value(),
        text + "name");
    const auto refused = run({"hostile.fmu", "--start-value", text, "1"});
    EXPECT_EQ(refused.exitStatus, 2);
    EXPECT_TRUE(contains(refused.error, "did you mean '" + shown)) << refused.error;
}

TEST_F(FmuRun, InformationComesFromTheModelDescriptionAlone) {
    writeModel("alone", "text", realParameter("mass", "Mass"),
               {{"../outside", "refused when it is unpacked"},
                {"binaries/linux64/model.so", "a library"},
                {"binaries/win64/", ""},
                {"binaries/win32/readme.txt", "no library"},
                {"binaries/linux32/folder/model.so", "not where it is looked for"}});
    const auto result = run({"alone.fmu", "--info=json"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    const auto json = nlohmann::json::parse(result.output);
    EXPECT_EQ(json["platforms"], nlohmann::json::array({"linux64"}));
    EXPECT_EQ(json["variables"][0]["name"], "mass");
    writeModel("twice", "text", "", {{"modelDescription.xml", "<another/>"}});
    EXPECT_TRUE(contains(run({"twice.fmu", "--info"}).error, "it has two modelDescription.xml"));
    test_support::writeArchive(directory / "none.fmu", {{"readme.txt", "no FMU"}});
    EXPECT_TRUE(contains(run({"none.fmu", "--info"}).error, "it has no modelDescription.xml"));
}

TEST_F(FmuRun, TableCutsWhatIsLongAndJsonDoesNot) {
    const std::string name(10'000, 'n');
    std::string variables = realParameter(name, "\xC3\xA4" + name);
    for (int i = 0; i < 1000; ++i) {
        variables += realParameter("x" + std::to_string(i), "short", i + 1);
    }
    writeModel("long", name, variables);
    const auto table = run({"long.fmu", "--info"}).output;
    EXPECT_LT(table.size(), 300'000U);
    EXPECT_TRUE(contains(table, "\n" + std::string(57, 'n') + "...  Real"));
    const auto json = nlohmann::json::parse(run({"long.fmu", "--info=json"}).output);
    EXPECT_EQ(json["variables"][0]["name"], name);
}

TEST_F(FmuRun, NoStepOfAnFmuMakesARunEndless) {
    for (const auto* step : {"0", "-1", "1e-12", "1e-320", "NaN"}) {
        writeModel("steps", "", realParameter("x", ""), {}, step);
        const auto result = run({"steps.fmu"}, {.timeout = std::chrono::seconds(30)});
        EXPECT_EQ(result.exitStatus, 2) << step;
        EXPECT_FALSE(result.timedOut) << step;
    }
}

TEST_F(FmuRun, FilesOfAnEarlierRunAreGoneBeforeTheFmuIsLoaded) {
    for (const auto* name : {"scripted.csv", "scripted.out", "old.svg"}) {
        writeFile(directory / name, "an earlier run's");
    }
    EXPECT_EQ(runScripted({"--start-value", "mass", "heavy"}).exitStatus, 2);
    EXPECT_TRUE(exists("scripted.csv")) << "there is no newer run";
    const auto result = runScripted(
        {"--plot", "old.svg"}, {.environment = {{"SCRIPTED_FMU_SCRIPT", "instantiate=abort"}}});
    EXPECT_NE(result.exitStatus, 0);
    for (const auto* name : {"scripted.csv", "scripted.out", "old.svg"}) {
        EXPECT_NE(readFile(directory / name), "an earlier run's") << name;
    }
}

TEST_F(FmuRun, WritesBesideTheFilesOfARunInProgress) {
    const platform::OutputFile log(narrow(directory / "scripted.out").c_str());
    platform::OutputFile second(narrow(directory / "scripted.2.csv").c_str());
    ASSERT_TRUE(second.write("theirs"));
    const auto unpacked = platform::claimFreeDirectory(narrow(directory / "fmu"), "");
    const auto result = runScripted({"--stop-time", "0.1", "--working-directory", "fmu"});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    EXPECT_NE(result.error.find("this one writes 'scripted.3.csv' and 'scripted.3.out'\n"),
              std::string::npos)
        << result.error;
    EXPECT_NE(result.error.find("this one unpacks into '"), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(directory / "fmu" / "scripted.2" / "modelDescription.xml"));
    EXPECT_FALSE(lines(readFile(directory / "scripted.3.csv")).empty());
    EXPECT_EQ(readFile(directory / "scripted.2.csv"), "theirs");
    EXPECT_EQ(readFile(directory / "scripted.out"), "");

    const auto named = runScripted({"--output-file", "scripted.2.csv"});
    EXPECT_EQ(named.exitStatus, 2);
    EXPECT_NE(named.error.find("cannot write the results file 'scripted.2.csv': another run or "
                               "program is using it; end that one first, or choose another by "
                               "--output-file"),
              std::string::npos)
        << named.error;
    EXPECT_EQ(readFile(directory / "scripted.2.csv"), "theirs");
}

TEST_F(FmuRun, OutputThatGoesNowhereIsAnErrorAndNoHang) {
    if (!test_support::canInterrupt) {
        GTEST_SKIP() << "there is no shell to close streams with";
    }
    const auto program = "'" + narrow(test_support::programPath("fmu_run")) + "' ";
    const auto model = "'" + scripted + "' ";

    struct Case {
        std::string command;
        int exitStatus;
        std::string message;
    };

    const std::vector<Case> cases{
        {program + model + ">&-", 1, "cannot write to standard output"},
        {program + model + "-q >&-", 0, ""},
        {program + model + "--info >/dev/full", 1, "standard output: No space left on device"},
        {program + model + "--info=json >/dev/full", 1, "cannot write to standard output"},
        {program + "--help >/dev/full", 1, "cannot write to standard output"},
        {"mkfifo pipe; " + program + model + "--output-file pipe", 1, "'pipe': it is a pipe"},
        {program + model + "--log-file pipe", 1, "'pipe': it is a pipe"},
        {"mkfifo p.svg; " + program + model + "--plot p.svg", 1, "'p.svg': it is a pipe"},
        {"ln -s gone link; " + program + model + "--output-file link", 1, "'link': it is a link"}};
    for (const auto& [command, exitStatus, message] : cases) {
        const auto result =
            runProgram("/bin/sh", {"-c", command},
                       {.workingDirectory = directory.path(), .timeout = std::chrono::seconds(30)});
        EXPECT_EQ(result.exitStatus, exitStatus) << command << result.error;
        EXPECT_TRUE(contains(result.error, message)) << command << result.error;
    }
    EXPECT_FALSE(exists("gone"));
    const auto closed = program + model + "-q <&- >&- 2>&-";
    runProgram("/bin/sh", {"-c", closed}, {.workingDirectory = directory.path()});
    EXPECT_TRUE(readFile(directory / "scripted.csv").starts_with("time[s],"));
    EXPECT_TRUE(contains(log(), "Closing plugin"));
}

TEST_F(FmuRun, TerminationEndsARunInOrder) {
    if (!test_support::canInterrupt) {
        GTEST_SKIP() << "there is nobody to send the signal";
    }
    const auto result = runScripted(
        {"--start-value", "script", "doStep=sleep 0.02", "--stop-time", "1000"},
        {.interruptWhen = [this] { return lines(readFile(directory / "scripted.csv")).size() > 3; },
         .interruptsByTermination = true});
    EXPECT_EQ(result.exitStatus, 130);
    EXPECT_TRUE(contains(result.error, "interrupted at t = ")) << result.error;
    EXPECT_TRUE(contains(log(), "Closing plugin"));
}

TEST_F(FmuRun, BlanksAndOtherLettersInPaths) {
    const std::filesystem::path folder = directory / std::filesystem::path(u8"Größe und Länge");
    std::filesystem::create_directory(folder);
    const auto model = folder / std::filesystem::path(u8"Reifen ä 1.fmu");
    std::filesystem::copy_file(fmuPath("scripted"), model);
    const auto unpacked = folder / "unpacked here";
    const auto result = run({narrow(model), "--working-directory", narrow(unpacked)});
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    EXPECT_TRUE(std::filesystem::exists(directory / std::filesystem::path(u8"Reifen ä 1.csv")));
    EXPECT_TRUE(std::filesystem::exists(unpacked / "modelDescription.xml"));
}

TEST_F(FmuRun, LeavesNothingInTheTemporaryDirectory) {
    const auto temporary = directory / "temporary";
    std::filesystem::create_directory(temporary);
    const auto place = narrow(temporary);
    const RunOptions options{.environment = {{"TMPDIR", place}, {"TMP", place}, {"TEMP", place}}};
    for (const Arguments& arguments : {Arguments{}, Arguments{"--info"}, Arguments{"--validate"},
                                       Arguments{"--start-time", "9"}}) {
        runScripted(arguments, options);
        EXPECT_TRUE(std::filesystem::is_empty(temporary)) << arguments.size();
    }
}

TEST_F(FmuRun, NamesADirectoryThatCannotBeMadeAndTheOptionForAnother) {
    writeFile(directory / "file", "in the way");
    const auto place = narrow(directory / "file" / "below");
    const auto working = runScripted({"--working-directory", place});
    EXPECT_EQ(working.exitStatus, 2);
    EXPECT_TRUE(contains(working.error, place + "': "));
    EXPECT_TRUE(contains(working.error, "; choose another by --working-directory"));
    const auto temporary =
        runScripted({}, {.environment = {{"TMPDIR", place}, {"TMP", place}, {"TEMP", place}}});
    if (temporary.exitStatus != 0) { // Windows may know another.
        EXPECT_EQ(temporary.exitStatus, 2);
        EXPECT_TRUE(contains(temporary.error, "temporary directory in '" + place))
            << temporary.error;
    }
}

TEST_F(FmuRun, ManualPageAndCompletionKnowTheOptionsOfHelp) {
    const auto help = run({"--help"});
    const auto page = run({"--man-page"});
    const auto completion = run({"--completion"});
    EXPECT_EQ(help.exitStatus + page.exitStatus + completion.exitStatus, 0);
    EXPECT_TRUE(run({"--version"}).output.starts_with("fmu_run "));
    for (const auto* option : {"--start-time", "--info", "--plot", "--quiet", "--help"}) {
        std::string escaped;
        for (const char c : std::string(option)) {
            escaped += c == '-' ? std::string("\\-") : std::string(1, c);
        }
        EXPECT_TRUE(contains(help.output, option)) << option;
        EXPECT_TRUE(contains(page.output, escaped)) << option;
        EXPECT_TRUE(contains(completion.output, option)) << option;
    }
    EXPECT_FALSE(contains(help.output, "--man-page"));
}

TEST_F(FmuRun, PlotShowsTheChosenColumns) {
    const auto drawn = runScripted({"--plot", "it's.svg", "--plot-columns", "x,P[1]"});
    if (contains(drawn.error, "gnuplot is not there")) {
        GTEST_SKIP() << "no picture to look at: gnuplot is not installed";
    }
    EXPECT_EQ(drawn.exitStatus, 0) << drawn.error;
    const auto picture = readFile(directory / "it's.svg");
    for (const auto* text : {">x<", ">P[1]<", ">[Pa]<", ">[m]<", ">time [s]<"}) {
        EXPECT_TRUE(contains(picture, text)) << text;
    }
    EXPECT_FALSE(contains(picture, ">y<"));
}

TEST_F(FmuRun, ResultsAreThereWhenGnuplotIsNot) {
    const auto missing = runScripted({"--plot", "x.svg"}, {.environment = {{"PATH", "."}}});
    EXPECT_EQ(missing.exitStatus, 2);
    EXPECT_TRUE(contains(missing.error, "gnuplot is not there; install it")) << missing.error;
    EXPECT_EQ(column("time[s]").size(), 11U);
}
