#include "platform/path_style.h"

#include <gtest/gtest.h>

#include <string>

namespace platform {
namespace {

struct DirectoryCase {
    const PathStyle& style;
    const char* currentDirectory;
    const char* directory;
    const char* expected;
};

TEST(PathStyle, MakesDirectoriesAbsolute) {
    const DirectoryCase cases[] = {
        {windowsPaths, "C:\\runs", "C:/data/fmu", "C:\\data\\fmu"},
        {windowsPaths, "C:\\runs", "out/fmu", "C:\\runs\\out\\fmu"},
        {windowsPaths, "C:\\runs", "", "C:\\runs\\"},
        {windowsPaths, "C:\\runs", "\\server", "C:\\runs\\\\server"},
        {windowsPaths, "C:\\runs", "\\\\server\\share", "\\\\server\\share"},
        {windowsPaths, "C:\\runs", "//server/share/x", "\\\\server\\share\\x"},
        {windowsPaths, "C:\\runs", "\\\\?\\D:\\fmu", "\\\\?\\D:\\fmu"},
        {windowsPaths, "C:/a b", "d:rel", "d:rel"},
        {windowsPaths, "C:\\r", "x", "C:\\r\\x"},
        {posixPaths, "/runs", "/data/fmu", "/data/fmu"},
        {posixPaths, "/runs", "out/fmu", "/runs/out/fmu"},
        {posixPaths, "/runs", "back\\slash", "/runs/back\\slash"},
        {posixPaths, "/runs", "C:/x", "/runs/C:/x"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(absoluteDirectory(c.style, c.currentDirectory, c.directory), c.expected)
            << c.directory;
    }
}

TEST(PathStyle, RefusesDirectoriesBeyondTheirCapacity) {
    const std::string longest = "C:\\" + std::string(windowsPaths.capacity - 4, 'x');
    EXPECT_EQ(absoluteDirectory(windowsPaths, "C:\\", longest), longest);
    EXPECT_FALSE(absoluteDirectory(windowsPaths, "C:\\", longest + "x"));
    EXPECT_FALSE(absoluteDirectory(windowsPaths, longest, "x"));
    EXPECT_TRUE(absoluteDirectory(posixPaths, "/", longest + longest));
}

TEST(PathStyle, TakesPathsApart) {
    EXPECT_EQ(directoryOf(windowsPaths, "C:\\runs/case.xml"), "C:\\runs");
    EXPECT_EQ(directoryOf(windowsPaths, "case.xml"), "case.xml");
    EXPECT_EQ(directoryOf(posixPaths, "runs\\case.xml"), "runs\\case.xml");
    EXPECT_EQ(fileNameOf(windowsPaths, "D:/models\\tyre.fmu"), "tyre.fmu");
    EXPECT_EQ(fileNameOf(posixPaths, "models\\tyre.fmu"), "models\\tyre.fmu");
    EXPECT_EQ(fileNameOf(posixPaths, "models/"), "");
    EXPECT_EQ(withTrailingSeparator(windowsPaths, "C:/out"), "C:/out\\");
    EXPECT_EQ(withTrailingSeparator(windowsPaths, "C:/out/"), "C:/out/");
    EXPECT_EQ(withTrailingSeparator(posixPaths, "out\\"), "out\\/");
    EXPECT_EQ(withTrailingSeparator(posixPaths, ""), "");
}

} // namespace
} // namespace platform
