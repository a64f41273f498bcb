#pragma once

#include <string>

/// Which build this is: for the host's log, the console and the run's log.
namespace run_config {

/// What was built, and when.
struct BuildValues {
    const char* version;       ///< Three numbers separated by points.
    const char* versionSuffix; ///< Follows the version directly; empty in ordinary builds.
    const char* date;          ///< Day of the build's commit, like "Jan 31 2025".
    const char* branch;        ///< Branch of the source control.
    const char* commit;        ///< Its commit, seven hexadecimal digits.
};

/// What the compiler says of itself and of its target.
struct ToolChain {
    bool windows = false;
    bool linuxSystem = false;
    /// Name and version of any other compiler than Intel's; null for none that names itself.
    const char* otherCompiler = nullptr;
    int intelVersion = 0;     ///< Version of the Intel compiler, 0 for any other.
    int microsoftVersion = 0; ///< Version of the Microsoft compiler that it is, or stands in for.
    bool x86 = false;         ///< An x86 processor of either width.
    bool x86With64Bits = false;
    bool release = false;
    bool multithreadedReleaseDll = false; ///< The C runtime of the Microsoft compiler's /MD.
};

/// The values of this build.
const BuildValues& buildValues();

/// The tool chain of this build.
const ToolChain& toolChain();

/// Version, date and branch in one line.
std::string buildText(const BuildValues& values);

/// "Compilation Environment: " and operating system, compiler, bits, configuration and runtime.
std::string environmentText(const ToolChain& toolChain);

} // namespace run_config
