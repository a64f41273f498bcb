#include "fmi_tools.h"
#include "support/current_directory.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <string>

using test_support::narrow;
using test_support::TemporaryDirectory;

namespace fs = std::filesystem;

namespace {

/// Loads the tyre into `workingDirectory` and ends it. True when it loaded.
bool loads(const std::string& workingDirectory) {
    const std::string fmu = narrow(test_support::fmuPath("tyre"));
    FmiToolsInstance* instance = fmiToolsLoadFmu(fmu.c_str(), workingDirectory.c_str(), "");
    fmiToolsCleanup(instance);
    return instance != nullptr;
}

TEST(WorkingDirectory, MayBeWrittenWithForwardSlashes) {
    const TemporaryDirectory directory;
    EXPECT_TRUE(loads((directory / "work" / "fmu").generic_string()));
    EXPECT_TRUE(fs::exists(directory / "work" / "fmu" / "binaries" / "win64" / "tyre.dll"));
}

TEST(WorkingDirectory, WithoutADriveLetterIsRelativeToTheCurrentDirectory) {
    const TemporaryDirectory directory;
    const CurrentDirectory here(directory.path());
    EXPECT_TRUE(loads("out/fmu"));
    EXPECT_TRUE(fs::exists(directory / "out" / "fmu" / "modelDescription.xml"));
    EXPECT_EQ(fs::current_path(), directory.path());
}

TEST(WorkingDirectory, BeyondTheLimitOfWindowsIsRefused) {
    const TemporaryDirectory directory;
    const CurrentDirectory here(directory.path());
    const std::string parent = narrow(directory.path()) + "\\";
    for (const std::size_t length : {std::size_t{260}, std::size_t{300}, std::size_t{5000}}) {
        EXPECT_FALSE(loads(parent + std::string(length - parent.size(), 'a'))) << length;
        EXPECT_FALSE(loads(std::string(length - parent.size(), 'a'))) << length;
    }
    EXPECT_TRUE(fs::is_empty(directory.path()));
}

} // namespace
