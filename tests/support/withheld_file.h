#pragma once

#include <cstdint>
#include <string>

namespace test_support {

/// Keeps this process from reading a file while it lives, in the way that is usual on the system: by
/// its rights on Linux, also for the superuser; on Windows by having it open for oneself alone.
class WithheldFile {
  public:
    explicit WithheldFile(const std::string& path);
    ~WithheldFile();
    WithheldFile(const WithheldFile&) = delete;
    WithheldFile& operator=(const WithheldFile&) = delete;
    WithheldFile(WithheldFile&&) = delete;
    WithheldFile& operator=(WithheldFile&&) = delete;

    /// What a message says of such a file.
    static const char* const reason;

  private:
    std::intptr_t before_; ///< What the destructor puts back or closes.
};

} // namespace test_support
