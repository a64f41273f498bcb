#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the files of libraries say about themselves, read without running or mapping them. The
/// bytes may be anything: they come from an FMU.
namespace platform {

/// Names of the libraries that the Windows library (PE32+) in `file` needs itself; what can be read
/// of them when the file is damaged.
std::vector<std::string> importsOfWindowsLibrary(std::string_view file);

/// What makes the Linux library (64-bit ELF) in `file` unfit to be mapped into a process: the
/// loader trusts its headers, and would crash where they lead out of the file. Nothing when they
/// are sound, and for what is no ELF file at all, which the loader refuses by itself.
std::optional<std::string> faultOfLinuxLibrary(std::string_view file);

} // namespace platform
