#pragma once

#include <filesystem>

/// Makes a directory the process's current one, as long as the object lives.
class CurrentDirectory {
  public:
    explicit CurrentDirectory(const std::filesystem::path& directory) {
        std::filesystem::current_path(directory);
    }

    ~CurrentDirectory() { std::filesystem::current_path(before_); }

    CurrentDirectory(const CurrentDirectory&) = delete;
    CurrentDirectory& operator=(const CurrentDirectory&) = delete;

  private:
    std::filesystem::path before_ = std::filesystem::current_path();
};
