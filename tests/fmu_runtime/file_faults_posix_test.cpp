// Every file operation of a run fails once, by functions that stand before those of the C library;
// and a disk that is full.
#include "fmu_runtime/loaded_fmu.h"
#include "fmu_runtime/whole_run.h"
#include "platform/held_directory.h"
#include "platform/output_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool takesNothing = false; // Every write.
long operationsLeft = 0;   // Until the one that fails; 0: none fails.

bool fails() {
    errno = ENOSPC;
    return operationsLeft > 0 && --operationsLeft == 0;
}

template <typename Function>
Function* original(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    static auto* const call = original<int(const char*, int, ...)>("open");
    return fails() ? -1 : call(path, flags, 0666);
}

std::FILE* fopen64(const char* path, const char* mode) {
    static auto* const call = original<std::FILE*(const char*, const char*)>("fopen64");
    return fails() ? nullptr : call(path, mode);
}

std::size_t fread(void* target, std::size_t size, std::size_t count, std::FILE* file) {
    static auto* const call = original<decltype(fread)>("fread");
    return fails() ? 0 : call(target, size, count, file);
}

ssize_t read(int file, void* target, std::size_t size) {
    static auto* const call = original<ssize_t(int, void*, std::size_t)>("read");
    return fails() ? -1 : call(file, target, size);
}

/// As on a disk that fills up: half of it goes through, then nothing does.
ssize_t write(int file, const void* source, std::size_t size) {
    static auto* const call = original<ssize_t(int, const void*, std::size_t)>("write");
    if (takesNothing && file > STDERR_FILENO) {
        return 0;
    }
    if (fails()) {
        if (size > 1) {
            operationsLeft = 1;
            return call(file, source, size / 2);
        }
        return -1;
    }
    return call(file, source, size);
}

int ftruncate(int file, off_t size) noexcept {
    static auto* const call = original<int(int, off_t)>("ftruncate");
    return fails() ? -1 : call(file, size);
}

int mkdir(const char* path, mode_t mode) noexcept {
    static auto* const call = original<int(const char*, mode_t)>("mkdir");
    return fails() ? -1 : call(path, mode);
}

int remove(const char* path) noexcept {
    static auto* const call = original<int(const char*)>("remove");
    return fails() ? -1 : call(path);
}

char* getcwd(char* path, std::size_t size) noexcept {
    static auto* const call = original<char*(char*, std::size_t)>("getcwd");
    return fails() ? nullptr : call(path, size);
}
}

namespace {

using namespace test_support;
using testing::HasSubstr;
using testing::Not;

/// True when the lines of `part` are whole lines of `whole`, in their order.
bool isPartOf(const std::vector<std::string>& part, const std::vector<std::string>& whole) {
    auto position = whole.begin();
    return std::ranges::all_of(part, [&](const std::string& line) {
        position = std::find(position, whole.end(), line);
        return position != whole.end() && position++ != whole.end();
    });
}

struct Outcome {
    bool succeeded;
    bool happened;     ///< There were that many operations.
    std::string error; ///< What standard error got.
    std::vector<std::string> results;
    std::vector<std::string> log;
};

Outcome runWithFailing(const WholeRun& run, long number) {
    run.clear();
    testing::internal::CaptureStderr();
    operationsLeft = number;
    const bool succeeded = run.run();
    const bool happened = operationsLeft == 0;
    operationsLeft = 0;
    Outcome outcome{succeeded, happened, testing::internal::GetCapturedStderr(),
                    lines(run.results()), withoutTimes(run.log())};
    EXPECT_TRUE(run.results().empty() || run.results().ends_with('\n')) << number;
    EXPECT_TRUE(run.log().empty() || run.log().ends_with('\n')) << number;
    return outcome;
}

std::size_t failuresTold(const std::vector<std::string>& log) {
    return static_cast<std::size_t>(std::ranges::count_if(log, [](const std::string& line) {
        return line.find("Failed to write") != std::string::npos;
    }));
}

TEST(FileOperation, FailsWithoutCrashHalfLineOrWrongSuccess) {
    const WholeRun run;
    const Outcome whole = runWithFailing(run, 0);
    ASSERT_TRUE(whole.succeeded);
    Outcome now = whole;
    std::size_t refusedLoads = 0;
    std::size_t lostRows = 0;
    std::size_t lostLines = 0;
    for (long number = 1; now.happened; ++number) {
        now = runWithFailing(run, number);
        const bool loaded = !now.log.empty();
        refusedLoads += loaded ? 0 : 1;
        EXPECT_TRUE(isPartOf(now.results, whole.results)) << number;
        if (loaded && !now.results.empty() && now.results != whole.results) {
            ++lostRows;
            EXPECT_EQ(now.succeeded, now.results.front() != whole.results.front()) << number;
            EXPECT_EQ(failuresTold(now.log), 1U) << number;
        } else {
            EXPECT_TRUE(isPartOf(now.log, whole.log)) << number;
        }
        if (now.succeeded && !now.log.empty() && now.log.size() < whole.log.size()) {
            ++lostLines;
            EXPECT_THAT(now.error, HasSubstr("[Error] Failed to write log file ")) << number;
        }
    }
    EXPECT_GT(refusedLoads, 5U);
    EXPECT_GE(lostRows, whole.results.size() - 1);
    EXPECT_GE(lostLines, whole.log.size());
}

TEST(FullDisk, IsToldOnceForEachFileAndFailsEachRow) {
    LoadedFmu fmu("scripted");
    fmiToolsSetResultsFile(fmu, "/dev/full");
    fmiToolsInitialize(fmu);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.5), -202);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 1.0), -202);
    EXPECT_THAT(fmu.log().back(), HasSubstr("[Error] Results logging failed"));
    EXPECT_EQ(failuresTold(fmu.log()), 1U);
    EXPECT_THAT(fmu.log().front(),
                HasSubstr("[Error] Failed to write results file /dev/full: No space"));
    testing::internal::CaptureStderr();
    fmiToolsSetLogFile(fmu, "/dev/full");
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 1.5), -202);
    EXPECT_EQ(fmu.real("x"), 0.0);
    const auto output = withoutTimes(testing::internal::GetCapturedStderr());
    ASSERT_EQ(output.size(), 1U);
    EXPECT_THAT(output.front(), HasSubstr("[Error] Failed to write log file /dev/full: No space"));
}

TEST(Write, ThatTakesNothingIsAFailure) {
    LoadedFmu fmu("scripted");
    fmiToolsInitialize(fmu);
    takesNothing = true;
    const std::size_t before = fmu.rows().size();
    testing::internal::CaptureStderr();
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 0.5), -202);
    takesNothing = false;
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("Failed to write log file"));
    EXPECT_EQ(fmu.rows().size(), before);
}

TEST(Pipe, ThatNobodyEmptiesIsToldAndDoesNotStopTheRun) {
    const TemporaryDirectory directory;
    const std::string pipe = narrow(directory / "pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    LoadedFmu fmu("scripted");
    fmiToolsInitialize(fmu);
    EXPECT_EQ(fmiToolsSetResultsFile(fmu, pipe.c_str()), 0);
    std::int32_t result = 0;
    for (int step = 0; step < 400; ++step) { // More than a pipe holds.
        result = fmiToolsSimulateToT(fmu, step * 0.1);
    }
    EXPECT_EQ(result, -202);
    EXPECT_EQ(failuresTold(fmu.log()), 1U);
}

/// Has the standard streams closed while it lives.
class ClosedStandardStreams {
  public:
    ClosedStandardStreams() {
        std::fflush(stdout);
        for (std::size_t stream = 0; stream < kept_.size(); ++stream) {
            kept_[stream] = fcntl(static_cast<int>(stream), F_DUPFD_CLOEXEC, 10);
            close(static_cast<int>(stream));
        }
    }

    ~ClosedStandardStreams() {
        std::fflush(stdout);
        for (std::size_t stream = 0; stream < kept_.size(); ++stream) {
            dup2(kept_[stream], static_cast<int>(stream));
            close(kept_[stream]);
        }
        std::clearerr(stdout);
        std::clearerr(stderr);
    }

    ClosedStandardStreams(const ClosedStandardStreams&) = delete;
    ClosedStandardStreams& operator=(const ClosedStandardStreams&) = delete;
    ClosedStandardStreams(ClosedStandardStreams&&) = delete;
    ClosedStandardStreams& operator=(ClosedStandardStreams&&) = delete;

  private:
    std::array<int, 3> kept_{};
};

TEST(StandardStreams, ThatAreClosedAreNotTheFilesOfARun) {
    bool areClosed = false;
    std::string results;
    std::vector<std::string> log;
    {
        const ClosedStandardStreams closed;
        LoadedFmu fmu("scripted");
        areClosed = std::ranges::all_of(std::array{0, 1, 2},
                                        [](int stream) { return fcntl(stream, F_GETFD) == -1; });
        std::puts("printed by the host");
        fmu.cleanUp(); // Its last lines are for standard output.
        results = readFile(fmu.resultsFile());
        log = fmu.log();
    }
    EXPECT_TRUE(areClosed);
    EXPECT_THAT(results, testing::EndsWith("Q[1][-]\n"));
    EXPECT_EQ(log, std::vector<std::string>{"[FMITools][None][OK] Closing plugin"});
}

TEST(StandardStreams, ThatAreClosedAreNotTheFilesOfAnArchive) {
    const TemporaryDirectory directory;
    platform::HeldDirectory held(narrow(directory.path()));
    {
        const ClosedStandardStreams closed;
        const platform::OutputFile first = held.create("first");
        const platform::OutputFile second = held.create("second");
        const platform::OutputFile third = held.create("third");
        std::fputs("printed by the host", stderr);
    }
    EXPECT_EQ(readFile(directory / "third"), "");
}

/// The process may write files of this size only.
class SizeLimit {
  public:
    explicit SizeLimit(rlim_t size) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit small{size, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }

    ~SizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }

    SizeLimit(const SizeLimit&) = delete;
    SizeLimit& operator=(const SizeLimit&) = delete;
    SizeLimit(SizeLimit&&) = delete;
    SizeLimit& operator=(SizeLimit&&) = delete;

  private:
    rlimit before_{};
};

TEST(SizeLimit, OfFilesIsAFailureAndNoSignalWheneverItIsSet) {
    const TemporaryDirectory directory;
    platform::OutputFile before(narrow(directory / "before").c_str());
    const SizeLimit limit(10000);
    platform::OutputFile after(narrow(directory / "after").c_str());
    for (auto* file : {&before, &after}) {
        EXPECT_TRUE(file->write(std::string(9000, 'a')));
        EXPECT_FALSE(file->write(std::string(9000, 'b'))); // Would end the process.
        EXPECT_FALSE(file->write(std::string(9000, 'c')));
    }
    EXPECT_EQ(readFile(directory / "before").size(), 9000U);
    EXPECT_EQ(readFile(directory / "after").size(), 9000U);
}

TEST(FullDisk, LeavesWholeRowsBehind) {
    LoadedFmu fmu("scripted");
    fmiToolsSetLogFile(fmu, "/dev/null");
    fmiToolsInitialize(fmu);
    int lost = 0;
    {
        const SizeLimit limit(10000);
        for (int step = 0; step < 50; ++step) {
            lost += fmiToolsSimulateToT(fmu, step * 0.1) == -202 ? 1 : 0;
        }
    }
    EXPECT_GT(lost, 10);
    const std::string results = readFile(fmu.resultsFile());
    EXPECT_TRUE(results.ends_with('\n'));
    EXPECT_GT(results.size(), 9000U);
    EXPECT_EQ(fmiToolsSimulateToT(fmu, 6.0), 0); // There is room again.
    EXPECT_THAT(fmu.rows().back(), testing::StartsWith("6.0000000000000000e+00,"));
}

} // namespace
