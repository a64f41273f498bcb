#include "support/environment.h"

#include "support/run_program_platform.h"

#include <cstdlib>
#include <utility>

namespace test_support {

ScopedEnvironment::ScopedEnvironment(std::string name, const std::optional<std::string>& value)
    : name_(std::move(name)) {
    if (const char* before = std::getenv(name_.c_str())) {
        before_ = before;
    }
    setEnvironmentVariable(name_, value);
}

ScopedEnvironment::~ScopedEnvironment() {
    setEnvironmentVariable(name_, before_);
}

} // namespace test_support
