#include "platform/temporary_directory.h"
#include "support/environment.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <fstream>

namespace platform {
namespace {

namespace fs = std::filesystem;

TEST(TemporaryDirectory, IsNewForItsOwnerOnlyAndGoneWithTheObject) {
    fs::path path;
    {
        const TemporaryDirectory first("a test");
        const TemporaryDirectory second("a test");
        path = first.path();
        EXPECT_NE(first.path(), second.path());
        EXPECT_EQ(path.parent_path(), (fs::temp_directory_path() / "").parent_path());
        EXPECT_TRUE(path.filename().string().starts_with("a test"));
        EXPECT_EQ(path.filename().string().size(),
                  ("a test" + std::to_string(processNumber()) + "_").size() + 6);
        EXPECT_TRUE(fs::is_empty(path));
        if (fs::path::preferred_separator == '/') {
            EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_all);
        }
        test_support::writeFile(first / "file", "content");
    }
    EXPECT_FALSE(fs::exists(path));
}

TEST(TemporaryDirectory, RemovalTakesWhatIsProtectedAndLeavesWhatLinksLeadTo) {
    const test_support::TemporaryDirectory around;
    const auto directory = around / "to remove";
    fs::create_directories(directory / "protected" / "inner");
    test_support::writeFile(directory / "protected" / "inner" / "file", "content");
    test_support::writeFile(around / "kept", "content");
    std::error_code unsupported;
    fs::create_directory_symlink(around.path(), directory / "link", unsupported);
    fs::permissions(directory / "protected" / "inner" / "file", fs::perms::owner_read);
    fs::permissions(directory / "protected" / "inner", fs::perms::owner_read);
    fs::permissions(directory / "protected", fs::perms::none);
    EXPECT_FALSE(removeDirectory(directory));
    EXPECT_FALSE(fs::exists(directory));
    EXPECT_EQ(test_support::readFile(around / "kept"), "content");
    EXPECT_FALSE(removeDirectory(directory)) << "nothing there is no failure";
}

TEST(TemporaryDirectory, RemovalGoesOnPastAFileThatIsInUse) {
    const test_support::TemporaryDirectory around;
    const auto directory = around / "to remove";
    fs::create_directories(directory / "b");
    test_support::writeFile(directory / "a", "content");
    test_support::writeFile(directory / "c", "content");
    const std::ifstream use(directory / "a");
    const bool staysInUse = fs::path::preferred_separator == '\\'; // as on Windows
    EXPECT_EQ(static_cast<bool>(removeDirectory(directory)), staysInUse);
    EXPECT_EQ(fs::exists(directory / "a"), staysInUse);
    EXPECT_FALSE(fs::exists(directory / "b"));
    EXPECT_FALSE(fs::exists(directory / "c"));
}

TEST(TemporaryDirectory, TakesAwayWhatEndedProcessesLeftAndNothingElse) {
    const test_support::TemporaryDirectory around;
    const auto place = test_support::narrow(around.path());
    const test_support::ScopedEnvironment posix("TMPDIR", place);
    const test_support::ScopedEnvironment windows("TMP", place);
    // Numbers of processes stay below this one, and on Windows they are multiples of 4.
    const std::string ended = "999999997";
    const auto stale = around / ("a test" + ended + "_abc123");
    const auto held = around / ("a test" + ended + "_held00");
    const auto linked = around / ("a test" + ended + "_linked");
    const std::vector<fs::path> kept{around /
                                         ("a test" + std::to_string(processNumber()) + "_abc123"),
                                     around / ("a test" + ended + "_abc12"),
                                     around / ("a test" + ended + "_ABC456"),
                                     around / ("a test" + ended),
                                     around / "a test_abc123",
                                     around / ("another" + ended + "_abc123")};
    for (const auto& directory : kept) {
        fs::create_directories(directory);
    }
    fs::create_directories(stale / "within");
    test_support::writeFile(stale / "within" / "file", "content");
    fs::create_directories(held);
    const auto hold = holdDirectory(held);
    std::error_code unsupported;
    fs::create_directory_symlink(kept.back(), linked, unsupported);
    { const TemporaryDirectory next("a test"); }
    EXPECT_FALSE(fs::exists(stale));
    EXPECT_EQ(fs::exists(held), hold >= 0) << "another process's that has a number of its own";
    EXPECT_EQ(fs::exists(linked), !unsupported);
    for (const auto& directory : kept) {
        EXPECT_TRUE(fs::exists(directory)) << directory;
    }
    releaseDirectory(hold);
    { const TemporaryDirectory next("a test"); }
    EXPECT_FALSE(fs::exists(held));
}

TEST(TemporaryDirectory, MakingOneNamesTheReason) {
    const test_support::TemporaryDirectory around;
    std::error_code error;
    EXPECT_TRUE(makeUniqueDirectory(around / "missing", "x", error).empty());
    EXPECT_TRUE(error);
    EXPECT_FALSE(makeUniqueDirectory(around.path(), "x", error).empty());
    EXPECT_FALSE(error);
}

} // namespace
} // namespace platform
