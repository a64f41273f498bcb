#include "run_config/build_information.h"

#include "build_values.h"

namespace run_config {

namespace {

constexpr BuildValues thisBuild{build_values::version, build_values::versionSuffix, __DATE__,
                                build_values::branch, build_values::commit};

/// The one place where the compiler's macros are read.
constexpr ToolChain readCompilerMacros() {
    ToolChain found;
#ifdef _WIN32
    found.windows = true;
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

std::string compilerText(const ToolChain& tools) {
    if (tools.intelVersion == 0) {
        return "<unknown compiler>";
    }
    return "Intel Compiler " + std::to_string(tools.intelVersion) + " - " + visualStudioText(tools);
}

std::string bitsText(const ToolChain& tools) {
    std::string text = "<unknown bits>";
    if (tools.x86With64Bits) {
        text = "x86_64";
    }
    // Holds for 64 bits too, which are therefore reported like 32: the line has always read so.
    if (tools.x86) {
        text = "x86_32";
    }
    return text;
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
    return std::string("Compilation Environment: ") + (tools.windows ? "Windows" : "<unknown os>") +
           "; " + compilerText(tools) + "; " + bitsText(tools) + "; " +
           (tools.release ? "Release" : "<unknown config>") + "; " +
           (tools.multithreadedReleaseDll ? "Multithread Release DLL (/MD)" : "<Unknown runtime>");
}

} // namespace run_config
