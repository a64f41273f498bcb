#pragma once

#include <optional>
#include <string>

namespace test_support {

/// Sets an environment variable of this process, or removes it; puts things back at the end.
class ScopedEnvironment {
  public:
    ScopedEnvironment(std::string name, const std::optional<std::string>& value);
    ~ScopedEnvironment();
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;
    ScopedEnvironment(ScopedEnvironment&&) = delete;
    ScopedEnvironment& operator=(ScopedEnvironment&&) = delete;

  private:
    std::string name_;
    std::optional<std::string> before_;
};

} // namespace test_support
