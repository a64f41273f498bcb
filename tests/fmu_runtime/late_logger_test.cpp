// FMUs whose library stays in the process when they are cleaned up.
#include "fmu_runtime/loaded_fmu.h"
#include "platform/shared_library.h"
#include "support/environment.h"

#include <gtest/gtest.h>

/// Asked for by the leak checker of the sanitizers, which does not know what the code of an FMU may
/// still use.
// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming): theirs
extern "C" const char* __lsan_default_suppressions() {
    return "leak:fmiToolsLoadFmu";
}

namespace {

using namespace test_support;

TEST(Logger, MayBeCalledAfterTheFmuWasFreed) {
    const ScopedEnvironment script("SCRIPTED_FMU_SCRIPT", "unload=log ok c late");
    platform::SharedLibrary library;
    LoadedFmu whole("scripted");
    LoadedFmu pinned("scripted");
    ASSERT_TRUE(library.open(narrow(pinned.library("scripted"))));
    whole.cleanUp();
    pinned.cleanUp();
    testing::internal::CaptureStdout();
    EXPECT_TRUE(library.close());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(whole.lastLines(1).front(), "[FMU instance][c][OK] late"); // The log was still there.
    EXPECT_EQ(pinned.lastLines(1).front(), "[OK] Closing plugin");
}

TEST(Fmu, MayBeLoadedTwiceIntoOneDirectory) {
    const TemporaryDirectory directory;
    const std::string archive = narrow(fmuPath("scripted"));
    const std::string place = narrow(directory.path());
    FmiToolsInstance* first = fmiToolsLoadFmu(archive.c_str(), place.c_str(), "");
    FmiToolsInstance* second = fmiToolsLoadFmu(archive.c_str(), place.c_str(), "");
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(fmiToolsInitialize(first), 0);
    EXPECT_EQ(fmiToolsSimulateToT(first, 0.5), 0);
    fmiToolsCleanup(first);
    EXPECT_EQ(fmiToolsInitialize(second), 0);
    EXPECT_EQ(fmiToolsSimulateToT(second, 0.5), 0);
    fmiToolsCleanup(second);
}

} // namespace
