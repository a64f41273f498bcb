#include "platform/held_directory.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <system_error>

namespace {

namespace fs = std::filesystem;

TEST(HeldDirectory, IsNotLeftThroughALinkPutThereMeanwhile) {
    const test_support::TemporaryDirectory scratch;
    fs::create_directory(scratch / "outside");
    fs::create_directory(scratch / "top");
    platform::HeldDirectory directory(test_support::narrow(scratch / "top"));
    ASSERT_TRUE(directory.isOpen());
    ASSERT_TRUE(directory.enter("a/./b/"));
    // What somebody else may do now; Windows refuses the first of it.
    std::error_code error;
    fs::rename(scratch / "top/a/b", scratch / "top/a/c", error);
    fs::create_directory_symlink(scratch / "outside", scratch / "top/a/b", error);
    EXPECT_TRUE(directory.create("file").write("x"));
    EXPECT_TRUE(fs::is_empty(scratch / "outside"));
    fs::create_symlink(scratch / "outside/file", scratch / "top/a/link", error);
    ASSERT_TRUE(directory.enter("a"));
    EXPECT_FALSE(directory.read("link", [](std::string_view) { return true; }));
    EXPECT_TRUE(directory.create("link").write("x"));
    EXPECT_TRUE(fs::is_empty(scratch / "outside"));
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(scratch / "top/a/link")));
    EXPECT_FALSE(directory.enter("a/link/below"));
}

TEST(HeldDirectory, MakesNewFilesInPlaceOfOldOnes) {
    const test_support::TemporaryDirectory scratch;
    platform::HeldDirectory directory(test_support::narrow(scratch.path()));
    ASSERT_TRUE(directory.enter(""));
    EXPECT_TRUE(directory.create("file").write("old"));
    std::error_code error;
    fs::create_hard_link(scratch / "file", scratch / "other name of it", error);
    EXPECT_TRUE(directory.create("file").write("new"));
    EXPECT_EQ(test_support::readFile(scratch / "file"), "new");
    if (!error) {
        EXPECT_EQ(test_support::readFile(scratch / "other name of it"), "old");
    }
    directory.remove("file");
    EXPECT_FALSE(fs::exists(scratch / "file"));
    EXPECT_FALSE(platform::HeldDirectory(test_support::narrow(scratch / "missing")).isOpen());
}

} // namespace
