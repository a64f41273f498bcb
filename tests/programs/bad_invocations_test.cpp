// What a user can get wrong on a command line, by option: each is answered with status 2 and one
// line that names what is wrong and says what to do, before any file is touched.
#include "support/archive_writer.h"
#include "support/files.h"
#include "support/run_program.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

using test_support::fmuPath;
using test_support::narrow;
using test_support::readFile;

struct Case {
    std::string program;
    std::string arguments; ///< Separated by blanks; "S" is scripted.fmu, "T" a tyre's command line.
    std::string named;     ///< In the message.
};

const std::vector<Case> cases = {
    // fmu_run: which FMU
    {"fmu_run", "", "MODEL is required"},
    {"fmu_run", "none.fmu", "'none.fmu'"},
    {"fmu_run", "none/none.fmu", "there is no file 'none/none.fmu'"},
    {"fmu_run", "folder", "'folder' is a directory"},
    {"fmu_run", ".", "'.' is a directory"},
    {"fmu_run", "text.fmu", "'text.fmu': it is no archive"},
    {"fmu_run", "empty.fmu", "'empty.fmu': it is empty"},
    {"fmu_run", "cut.fmu", "'cut.fmu': it is cut off"},
    {"fmu_run", "fmi1.fmu", "'fmi1.fmu': it is made for FMI 1.0; export it for FMI 2.0"},
    {"fmu_run", "fmi3.fmu", "'fmi3.fmu': it is made for FMI 3.0; export it for FMI 2.0"},
    {"fmu_run", "exchange.fmu", "'exchange.fmu': it offers Model Exchange only"},
    {"fmu_run", "S S", "scripted.fmu"},
    {"fmu_run", "S extra", "extra"},
    {"fmu_run", "--info none.fmu", "'none.fmu'"},
    {"fmu_run", "--info=json none.fmu", "'none.fmu'"},
    {"fmu_run", "--info=xml S", "--info=xml"},
    {"fmu_run", "--info text.fmu", "'text.fmu'"},
    {"fmu_run", "--info cut.fmu", "'cut.fmu'"},
    {"fmu_run", "--info folder", "'folder'"},
    {"fmu_run", "--validate none.fmu", "'none.fmu'"},
    {"fmu_run", "--validate folder", "'folder'"},
    {"fmu_run", "--write-parameters none.fmu", "'none.fmu'"},
    {"fmu_run", "--write-parameters empty.fmu", "'empty.fmu'"},
    {"fmu_run", "--info --validate S", "--info"},
    {"fmu_run", "--info --write-parameters S", "--info"},
    {"fmu_run", "--validate --write-parameters S", "--validate"},
    {"fmu_run", "other.fmu", "it has no library for "},
    {"fmu_run", "incomplete.fmu", "ask the FMU's maker for one that has all functions"},
    // its options
    {"fmu_run", "S --speed 3", "--speed"},
    {"fmu_run", "S -x", "-x"},
    {"fmu_run", "S --stoptime 1", "no option '--stoptime'; did you mean --stop-time?"},
    {"fmu_run", "S --start-value mass=3", "write --start-value mass 3"},
    {"fmu_run", "S --start-value mass=3 --stop-time 1", "write --start-value mass 3"},
    {"fmu_run", "S --quiet=perhaps", "perhaps"},
    {"fmu_run", "S --stop-time", "--stop-time"},
    {"fmu_run", "S --stop-time abc", "--stop-time 'abc'"},
    {"fmu_run", "S --stop-time inf", "--stop-time 'inf'"},
    {"fmu_run", "S --stop-time nan", "--stop-time 'nan'"},
    {"fmu_run", "S --stop-time 1,5", "--stop-time '1,5'"},
    {"fmu_run", "S --stop-time 1s", "--stop-time '1s'"},
    {"fmu_run", "S --stop-time 1e999", "--stop-time '1e999'"},
    {"fmu_run", "S --stop-time -1", "--stop-time -1"},
    {"fmu_run", "S --stop-time 1 --stop-time 2", "--stop-time"},
    {"fmu_run", "S --start-time", "--start-time"},
    {"fmu_run", "S --start-time abc", "--start-time 'abc'"},
    {"fmu_run", "S --start-time -1", "--start-time -1"},
    {"fmu_run", "S --start-time 2", "lies before --start-time 2"},
    {"fmu_run", "S --start-time 3 --stop-time 2", "--stop-time 2 lies before --start-time 3"},
    {"fmu_run", "S --output-interval abc", "--output-interval 'abc'"},
    {"fmu_run", "S --output-interval 0", "--output-interval 0"},
    {"fmu_run", "S --output-interval -0.1", "--output-interval -0.1"},
    {"fmu_run", "S --output-interval 1e-30", "--output-interval 1e-30"},
    {"fmu_run", "S --timeout -1", "--timeout"},
    {"fmu_run", "S --timeout 0", "--timeout"},
    {"fmu_run", "S --timeout soon", "--timeout 'soon'"},
    {"fmu_run", "S --start-value", "--start-value"},
    {"fmu_run", "S --start-value mass", "--start-value"},
    {"fmu_run", "S --start-value masss 1", "'masss'; did you mean 'mass'?"},
    {"fmu_run", "S --start-value mass 1,5", "--start-value mass '1,5'"},
    {"fmu_run", "S --start-value mass heavy", "--start-value mass 'heavy'"},
    {"fmu_run", "S --start-value mass nan", "--start-value mass 'nan'"},
    {"fmu_run", "S --start-value offset 1.5", "--start-value offset '1.5'"},
    {"fmu_run", "S --start-value offset 3000000000", "--start-value offset '3000000000'"},
    {"fmu_run", "S --start-value enabled yes", "--start-value enabled 'yes'"},
    {"fmu_run", "S --start-value enabled true", "has the value reference of 'offset'"},
    {"fmu_run", "S --output-interval 1e-10", "at most 1e9 steps"},
    {"fmu_run", "S --input-file boolean.csv", "has the value reference of 'selector'"},
    {"fmu_run", "S --start-value mode high", "--start-value mode 'high'"},
    // its input file
    {"fmu_run", "S --input-file", "--input-file"},
    {"fmu_run", "S --input-file none.csv", "'none.csv'"},
    {"fmu_run", "S --input-file folder", "'folder' is a directory"},
    {"fmu_run", "S --input-file zero.csv", "'zero.csv' has a zero byte in line 2"},
    {"fmu_run", "S --input-file empty.csv", "'empty.csv'"},
    {"fmu_run", "S --input-file header.csv", "'header.csv'"},
    {"fmu_run", "S --input-file semicolon.csv", "separated by ';'"},
    {"fmu_run", "S --input-file unknown.csv", "column 'v' of 'unknown.csv'"},
    {"fmu_run", "S --input-file output.csv", "column 'y' of 'output.csv' is no input"},
    {"fmu_run", "S --input-file text.csv", "text.csv:3: the value 'fast' in column 'u'"},
    {"fmu_run", "S --input-file infinite.csv", "infinite.csv:2: the value 'inf'"},
    {"fmu_run", "S --input-file back.csv", "back.csv:3: the time 0"},
    {"fmu_run", "S --input-file ragged.csv", "ragged.csv:2: there are 3 values"},
    {"fmu_run", "S --input-file twice.csv", "two columns 'u'"},
    {"fmu_run", "S --input-file nameless.csv", "column 2 has no name"},
    {"fmu_run", "S --input-file open.csv", "open.csv:2: a quoted value is not closed"},
    {"fmu_run", "S --input-file integer.csv",
     "integer.csv:2: the value in column 'selector' '1.5'"},
    // what it writes
    {"fmu_run", "S --output-file none/x.csv", "results file 'none/x.csv'"},
    {"fmu_run", "S --output-file folder", "results file 'folder': it is a directory"},
    {"fmu_run", "S --log-file none/x.out", "log file 'none/x.out'"},
    {"fmu_run", "S --log-file folder", "log file 'folder'"},
    {"fmu_run", "S --output-file S", "would overwrite the FMU"},
    {"fmu_run", "S --output-file ./scripted.fmu", "would overwrite the FMU"},
    {"fmu_run", "S --output-file folder/../scripted.fmu", "would overwrite the FMU"},
    {"fmu_run", "S --output-file hard.fmu", "would overwrite the FMU"},
    {"fmu_run", "S --log-file S", "would overwrite the FMU"},
    {"fmu_run", "S --log-file hard.fmu", "would overwrite the FMU"},
    {"fmu_run", "S --input-file good.csv --output-file good.csv", "would overwrite the input file"},
    {"fmu_run", "S --input-file good.csv --log-file ./good.csv", "would overwrite the input file"},
    {"fmu_run", "S --input-file scripted.csv", "would overwrite the input file"},
    {"fmu_run", "S --output-file x.out --log-file x.out", "would overwrite the results file"},
    {"fmu_run", "S --output-file x.out --log-file ./x.out", "would overwrite the results file"},
    {"fmu_run", "S --output-file x.svg --plot x.svg", "would overwrite the results file"},
    {"fmu_run", "S --log-file x.svg --plot folder/../x.svg", "would overwrite the log file"},
    {"fmu_run", "S --plot x.pdf", "ends in .svg or .png"},
    {"fmu_run", "S --plot x", "ends in .svg or .png"},
    {"fmu_run", "S --plot-columns x", "--plot-columns x"},
    {"fmu_run", "S --plot x.svg --plot-columns energy", "'energy' has no results"},
    {"fmu_run", "S --plot x.svg --plot-columns yy", "'yy'"},
    {"fmu_run", "S --working-directory good.csv", "good.csv'"},
    // cosim_host: its options
    {"cosim_host", "", "--command-line"},
    {"cosim_host", "T extra", "extra"},
    {"cosim_host", "T --speeed 3", "--speeed"},
    {"cosim_host", "T --stoptime 1", "no option '--stoptime'; did you mean --stop-time?"},
    {"cosim_host", "T --step-size abc", "--step-size 'abc'"},
    {"cosim_host", "T --step-size 0", "--step-size"},
    {"cosim_host", "T --step-size -0.001", "--step-size"},
    {"cosim_host", "T --stop-time 0", "--stop-time"},
    {"cosim_host", "T --stop-time nan", "--stop-time 'nan'"},
    {"cosim_host", "T --stop-time 1e9 --step-size 1e-3", "--step-size"},
    {"cosim_host", "T --timeout -1", "--timeout"},
    {"cosim_host", "T --speed 0", "--speed"},
    {"cosim_host", "T --speed fast", "--speed 'fast'"},
    {"cosim_host", "T --skip all", "'all' is not known"},
    {"cosim_host", "T --vehicle lorry", "'lorry' is not known"},
    {"cosim_host", "T --vehicle car --open-loop", "--vehicle car"},
    {"cosim_host", "T --vehicle car --keep-going", "--vehicle car"},
    {"cosim_host", "T --wheel frontLeft=x", "--wheel"},
    {"cosim_host", "T --vehicle car --wheel middle=x", "'middle=x'"},
    {"cosim_host", "T --vehicle car --wheel frontLeft", "'frontLeft'"},
    {"cosim_host", "T --right-road flat", "--right-road"},
    {"cosim_host", "T --output P::4", "P::4"},
    {"cosim_host", "T --output :Force", "':Force'"},
    {"cosim_host", "T --plot p.svg", "--output-file"},
    {"cosim_host", "T --output-file x.csv --plot p.pdf", "p.pdf"},
    {"cosim_host", "T --plot-columns x", "--plot-columns x"},
    // what it reads
    {"cosim_host", "--command-line none.fmu", "there is no file 'none.fmu'"},
    {"cosim_host", "--command-line folder", "'folder' is a directory"},
    {"cosim_host", "--command-line empty.fmu", "'empty.fmu': it is empty"},
    {"cosim_host", "--command-line text.fmu", "'text.fmu': it is no archive"},
    {"cosim_host", "--command-line cut.fmu", "'cut.fmu': it is cut off"},
    {"cosim_host", "T --road zero.csv", "'zero.csv' has a zero byte in line 2"},
    {"cosim_host", "T --vehicle-file zero.csv", "'zero.csv' has a zero byte in line 2"},
    {"cosim_host", "T --input-file none.csv", "none.csv"},
    {"cosim_host", "T --input-file text.csv", "fast"},
    {"cosim_host", "T --input-file folder", "folder"},
    {"cosim_host", "T --road none.csv", "none.csv"},
    {"cosim_host", "T --road wide.csv", "wide.csv' has 3 columns"},
    {"cosim_host", "T --vehicle car --right-road none.csv", "none.csv"},
    {"cosim_host", "T --vehicle-file none.txt", "none.txt"},
    {"cosim_host", "T --vehicle-file good.csv", "in 'good.csv', line 1"},
    {"cosim_host", "T --solver none.so", "none.so"},
    {"cosim_host", "T --solver good.csv", "good.csv"},
    // what it writes
    {"cosim_host", "T --output-file none/out.csv", "none/out.csv"},
    {"cosim_host", "T --output-file folder", "folder"},
    {"cosim_host", "T --output-file tyre.fmu", "would overwrite the FMU"},
    {"cosim_host", "T --output-file ./tyre.fmu", "would overwrite the FMU"},
    {"cosim_host", "T --output-file tyre.csv", "would overwrite the solver's results"},
    {"cosim_host", "T --output-file tyre.out", "would overwrite the solver's log"},
    {"cosim_host", "T --output-file parameters.xml", "would overwrite the parameters file"},
    {"cosim_host", "T --road road.csv --output-file road.csv", "would overwrite the road"},
    {"cosim_host", "T --vehicle-file car.txt --output-file car.txt", "overwrite the vehicle file"},
    {"cosim_host", "T --input-file good.csv --output-file good.csv", "overwrite the input file"},
    {"cosim_host", "T --input-file tyre.csv", "would overwrite the input file"},
    {"cosim_host", "T --output-file x.svg --plot x.svg", "would overwrite the output file"},
};

class BadInvocations : public testing::Test {
  protected:
    BadInvocations() {
        namespace fs = std::filesystem;
        fs::create_directory(directory / "folder");
        for (const auto& [name, fmu] :
             std::map<std::string, std::string>{{"scripted", "scripted"},
                                                {"tyre", "tyre"},
                                                {"other", "scripted_other_platform"},
                                                {"incomplete", "scripted_missing_function"}}) {
            fs::copy_file(fmuPath(fmu), directory / (name + ".fmu"));
        }
        fs::create_hard_link(directory / "scripted.fmu", directory / "hard.fmu");
        const std::map<std::string, std::string> files = {
            {"text.fmu", "this is no archive"},
            {"empty.fmu", ""},
            {"cut.fmu", readFile(fmuPath("scripted")).substr(0, 5000)},
            {"empty.csv", ""},
            {"zero.csv", std::string("time,u\n0,1\0", 11)},
            {"header.csv", "time,u\n"},
            {"semicolon.csv", "time;u\n0;1\n"},
            {"unknown.csv", "time,v\n0,1\n"},
            {"output.csv", "time,y\n0,1\n"},
            {"text.csv", "time,u\n0,1\n1,fast\n"},
            {"infinite.csv", "time,u\n0,inf\n"},
            {"back.csv", "time,u\n1,1\n0,1\n"},
            {"ragged.csv", "time,u\n0,1,2\n"},
            {"twice.csv", "time,u,u\n0,1,2\n"},
            {"nameless.csv", "time,\n0,1\n"},
            {"open.csv", "time,u\n0,\"1\n"},
            {"integer.csv", "time,selector\n0,1.5\n"},
            {"boolean.csv", "time,active\n0,true\n"},
            {"good.csv", "time,u\n0,1\n"},
            {"scripted.csv", "time,u\n0,1\n"},
            {"tyre.csv", "time,u\n0,1\n"},
            {"road.csv", "s,h\n0,0\n"},
            {"wide.csv", "s,left,right\n0,0,0\n"},
            {"car.txt", "bodyMass = 400 kg\n"},
            {"parameters.xml", "<FMUSettings Version=\"1.0\"><Parameters/></FMUSettings>"}};
        for (const auto& [name, content] : files) {
            test_support::writeFile(directory / name, content);
        }
        writeModel("fmi1.fmu", "1.0", "CoSimulation");
        writeModel("fmi3.fmu", "3.0", "CoSimulation");
        writeModel("exchange.fmu", "2.0", "ModelExchange");
    }

    void writeModel(const std::string& name, const std::string& version, const std::string& kind) {
        test_support::writeArchive(
            directory / name,
            {{"modelDescription.xml", "<fmiModelDescription fmiVersion=\"" + version +
                                          "\" modelName=\"m\" guid=\"g\"><" + kind +
                                          " modelIdentifier=\"m\"/><ModelVariables/>" +
                                          "<ModelStructure/></fmiModelDescription>"}});
    }

    /// All files below the directory by name.
    std::map<std::string, std::string> contents() const {
        std::map<std::string, std::string> found;
        for (const auto& each : std::filesystem::directory_iterator(directory.path())) {
            found[narrow(each.path().filename())] =
                each.is_regular_file() ? readFile(each.path()) : "";
        }
        return found;
    }

    static std::vector<std::string> split(const std::string& text) {
        std::vector<std::string> words;
        std::istringstream stream(text);
        for (std::string word; stream >> word;) {
            if (word == "T") {
                words.insert(words.end(),
                             {"--command-line", "tyre.fmu -parameterfile parameters.xml"});
            } else {
                words.push_back(word == "S" ? "scripted.fmu" : word);
            }
        }
        return words;
    }

    test_support::TemporaryDirectory directory;
};

TEST_F(BadInvocations, GetOneLineAndStatusTwoAndTouchNothing) {
    ASSERT_GE(cases.size(), 120U);
    const auto before = contents();
    for (const auto& [program, arguments, named] : cases) {
        const auto result =
            runProgram(test_support::programPath(program), split(arguments),
                       test_support::RunOptions{.workingDirectory = directory.path()});
        const std::string what = program + " " + arguments + "\n" + result.error;
        EXPECT_EQ(result.exitStatus, 2) << what;
        EXPECT_EQ(test_support::lines(result.error).size(), 1U) << what;
        EXPECT_NE(result.error.find(named), std::string::npos) << what;
        EXPECT_TRUE(result.error.starts_with(program + ": ")) << what;
        EXPECT_NE(result.error.find(';'), std::string::npos) << "no remedy: " << what;
        for (const auto& [name, content] : before) {
            const auto now = directory / name;
            EXPECT_TRUE(std::filesystem::is_directory(now) || readFile(now) == content)
                << name << " was changed by " << what;
        }
    }
}

} // namespace
