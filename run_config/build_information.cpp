#include "run_config/build_information.h"

#include "build_values.h"

namespace run_config {

namespace {

constexpr BuildValues thisBuild{build_values::version, build_values::versionSuffix,
                                build_values::date, build_values::branch, build_values::commit};

/// The one place where the compiler's macros are read.
constexpr ToolChain readCompilerMacros() {
    ToolChain found;
#if defined(_WIN32)
    found.windows = true;
#elif defined(__linux__)
    found.linuxSystem = true;
#endif
#if defined(__clang__) && defined(__VERSION__)
    found.otherCompiler = __VERSION__; // "Clang 14.0.6", perhaps with its vendor before.
#elif defined(__GNUC__)
    found.otherCompiler = "GCC " __VERSION__;
#endif
#if defined(__INTEL_COMPILER)
    found.intelVersion = __INTEL_COMPILER;
#elif defined(__INTEL_LLVM_COMPILER)
    found.intelVersion = __INTEL_LLVM_COMPILER;
#endif
#ifdef _MSC_VER
    found.microsoftVersion = _MSC_VER;
#endif
#if defined(__x86_64__) || defined(_M_X64)
    found.x86With64Bits = true;
#endif
#if defined(__x86_64__) || defined(_M_X64) || defined(__i386__) || defined(_M_IX86)
    found.x86 = true;
#endif
#ifdef NDEBUG
    found.release = true;
#endif
#if defined(_MT) && defined(_DLL) && !defined(_DEBUG)
    found.multithreadedReleaseDll = true;
#endif
    return found;
}

constexpr ToolChain thisToolChain = readCompilerMacros();

/// The wording is that of the lines that users' tools search for: no release of Visual Studio is
/// named, only the compiler's number follows.
std::string visualStudioText(const ToolChain& tools) {
    std::string text = "No Visual Studio";
    if (tools.microsoftVersion != 0) {
        text += " (" + std::to_string(tools.microsoftVersion) + ")";
    }
    return text;
}

// The words for Windows are those that users' tools search for; they know no other compiler, and
// 64 bits read like 32. Elsewhere the words say what is.

std::string systemText(const ToolChain& tools) {
    if (tools.windows) {
        return "Windows";
    }
    return tools.linuxSystem ? "Linux" : "<unknown os>";
}

std::string compilerText(const ToolChain& tools) {
    if (tools.intelVersion != 0) {
        return "Intel Compiler " + std::to_string(tools.intelVersion) + " - " +
               visualStudioText(tools);
    }
    const bool named = !tools.windows && tools.otherCompiler != nullptr;
    return named ? tools.otherCompiler : "<unknown compiler>";
}

std::string bitsText(const ToolChain& tools) {
    if (tools.x86With64Bits && !tools.windows) {
        return "x86_64";
    }
    return tools.x86 ? "x86_32" : "<unknown bits>";
}

} // namespace

const BuildValues& buildValues() {
    return thisBuild;
}

const ToolChain& toolChain() {
    return thisToolChain;
}

std::string buildText(const BuildValues& values) {
    return std::string(values.version) + values.versionSuffix + "; Compiled on " + values.date +
           "; Branch " + values.branch + ";";
}

std::string environmentText(const ToolChain& tools) {
    return "Compilation Environment: " + systemText(tools) + "; " + compilerText(tools) + "; " +
           bitsText(tools) + "; " + (tools.release ? "Release" : "<unknown config>") + "; " +
           (tools.multithreadedReleaseDll ? "Multithread Release DLL (/MD)" : "<Unknown runtime>");
}

} // namespace run_config
