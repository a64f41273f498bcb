#include "fmi_tools.h"
#include "platform/command.h"
#include "platform/files.h"
#include "platform/shared_library.h"
#include "support/current_directory.h"
#include "support/files.h"
#include "support/run_program.h"

#include <gtest/gtest.h>

#include <string>

using test_support::fmuPath;
using test_support::narrow;
using test_support::readFile;
using test_support::TemporaryDirectory;
using test_support::writeFile;

namespace fs = std::filesystem;

namespace {

// What users' folders are called: blanks, operators of command interpreters, letters of any script.
const fs::path oddName = fs::path(u8"M\u00fcller & S\u00f8n + 100% {neu} \u20ac \u8f2e\u80ce");

// Says in a file of the current directory with what it was called.
void writeCleanUpScript(const fs::path& directory) {
    const fs::path script = directory / ("fmuclean" + std::string(platform::scriptSuffix()));
    writeFile(script, platform::scriptSuffix() == ".bat"
                          ? "@echo argument %1> cleaned.txt\r\n"
                          : "#!/bin/sh\necho argument $1> cleaned.txt\n");
    fs::permissions(script, fs::perms::owner_all);
}

class OddFolders : public testing::Test {
  protected:
    OddFolders() { fs::copy_file(fmuPath("tyre"), fmu); }

    TemporaryDirectory directory{oddName};
    fs::path fmu = directory / fs::path(u8"Reifen \u00fc.fmu");
};

TEST_F(OddFolders, HoldEverythingOfARun) {
    const CurrentDirectory here(directory.path());
    fs::create_directory(directory / "scripts");
    writeCleanUpScript(directory / "scripts");
    const std::string scripts = narrow(directory / "scripts" / "");

    FmiToolsInstance* tyre =
        fmiToolsLoadFmu(narrow(fmu).c_str(), narrow(directory / "work").c_str(), scripts.c_str());
    ASSERT_NE(tyre, nullptr);
    EXPECT_EQ(fmiToolsSetLogFile(tyre, narrow(directory / "tyre.out").c_str()), 0);
    EXPECT_EQ(fmiToolsSetResultsFile(tyre, narrow(directory / "tyre.csv").c_str()), 0);
    EXPECT_EQ(fmiToolsInitialize(tyre), 0);
    EXPECT_EQ(fmiToolsSimulateToT(tyre, 0.001), 0);
    EXPECT_EQ(fmiToolsCleanup(tyre), 0);

    EXPECT_TRUE(fs::exists(directory / "work" / "modelDescription.xml"));
    EXPECT_NE(readFile(directory / "tyre.out").find("Initialised FMU"), std::string::npos);
    EXPECT_EQ(test_support::lines(readFile(directory / "tyre.csv")).size(), 2U);
    EXPECT_EQ(readFile(directory / "cleaned.txt").substr(0, 10), "argument .");
}

TEST_F(OddFolders, AreFineForTheProgram) {
    test_support::RunOptions options;
    options.workingDirectory = directory.path();
    const auto result = test_support::runProgram(
        test_support::programPath("fmu_run"),
        {narrow(fmu), "--stop-time", "0.01", "--output-interval", "0.01"}, options);
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    EXPECT_EQ(test_support::lines(readFile(fs::path(fmu).replace_extension(".csv"))).size(), 3U);
}

TEST(FmuBinary, FindsTheLibrariesBesideIt) {
    const TemporaryDirectory directory;
    FmiToolsInstance* fmu = fmiToolsLoadFmu(narrow(fmuPath("scripted_needs_library")).c_str(),
                                            narrow(directory.path()).c_str(), "");
    ASSERT_NE(fmu, nullptr);
    EXPECT_EQ(fmiToolsInitialize(fmu), 0);
    fmiToolsCleanup(fmu);
}

TEST(FmuBinary, ThatCannotBeLoadedIsNamed) {
    const TemporaryDirectory directory;
    test_support::RunOptions options;
    options.workingDirectory = directory.path();
    const auto result = test_support::runProgram(
        test_support::programPath("fmu_run"), {narrow(fmuPath("scripted_lacks_library"))}, options);
    EXPECT_EQ(result.exitStatus, 2);
    const std::string missing = std::string("needed_library") + platform::SharedLibrary::suffix();
    EXPECT_NE(result.error.find(missing), std::string::npos) << result.error;
}

} // namespace
