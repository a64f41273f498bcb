#include "platform/command.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

TEST(ScriptCommand, IsQuotedWhereTheInterpreterOfWindowsWouldTakeItApart) {
    EXPECT_EQ(windowsScriptCommand("C:\\tools\\fmuclean.bat", "."), "C:\\tools\\fmuclean.bat .");
    // Behind a slash it reads a switch.
    EXPECT_EQ(windowsScriptCommand("./FMITools/fmuclean.bat", "."),
              "\"\"./FMITools/fmuclean.bat\" .\"");
    EXPECT_EQ(windowsScriptCommand("C:/FMITools/fmuclean.bat", "."),
              "\"\"C:/FMITools/fmuclean.bat\" .\"");
    EXPECT_EQ(windowsScriptCommand("C:\\a b\\fmuclean.bat", "."),
              "\"\"C:\\a b\\fmuclean.bat\" .\"");
    for (const char c : std::string(" &()[]{}^=;!'+,`~%/")) {
        const std::string program = std::string("C:\\") + c + "\\x.bat";
        EXPECT_EQ(windowsScriptCommand(program, "."), "\"\"" + program + "\" .\"");
    }
}

TEST(ScriptCommand, IsQuotedForTheShell) {
    EXPECT_EQ(posixScriptCommand("/opt/tools/fmuclean.sh", "."), "/opt/tools/fmuclean.sh .");
    EXPECT_EQ(posixScriptCommand("/a b/it's/x.sh", "."), "'/a b/it'\\''s/x.sh' .");
}

TEST(ScriptCommand, WithoutADirectoryLooksNowhereElse) {
    EXPECT_EQ(windowsScriptCommand("fmuclean.bat", "."), ".\\fmuclean.bat .");
    EXPECT_EQ(posixScriptCommand("fmuclean.sh", "."), "./fmuclean.sh .");
}

} // namespace
} // namespace platform
