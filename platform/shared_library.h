#pragma once

#include <string>

namespace platform {

/// A library loaded into the process, unloaded with the object.
class SharedLibrary {
  public:
    SharedLibrary() = default;

    ~SharedLibrary() { close(); }

    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;
    SharedLibrary(SharedLibrary&&) = delete;
    SharedLibrary& operator=(SharedLibrary&&) = delete;

    /// Loads `path`, an absolute path; libraries that it needs are also looked for beside it. False
    /// on failure, with the system's words in error().
    bool open(const std::string& path);

    /// The file whose code was bound. It may be another than the one asked for: the loader finds a
    /// library that it still has by its path, also when the file has been replaced; then the path
    /// ends in words that say so. Empty when the system does not tell.
    [[nodiscard]] std::string boundFile() const;

    /// Unloads the library. False on failure, with the system's words in error().
    bool close();

    [[nodiscard]] bool isOpen() const { return handle_ != nullptr; }

    /// Address of an exported name; null when there is none, with the system's words in error().
    void* symbol(const char* name);

    /// What made the last call fail.
    [[nodiscard]] const std::string& error() const { return error_; }

    /// Whether the process has the library of an absolute path, whoever loaded it: one may stay when it
    /// is unloaded.
    static bool isLoaded(const std::string& path);

    /// ".so" or ".dll".
    static const char* suffix();

    /// The FMI 2.0 folder below binaries/ for this platform: "linux64" or "win64" (section 2.3).
    static const char* fmiPlatform();

  private:
    void* handle_ = nullptr;
    std::string error_;
};

} // namespace platform
