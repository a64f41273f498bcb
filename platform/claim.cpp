#include "platform/claim.h"

#include "platform/files.h"

#include <utility>

namespace platform {

Claim::~Claim() {
    release();
}

Claim::Claim(Claim&& other) noexcept
    : handle_(std::exchange(other.handle_, -1)),
      isTaken_(other.isTaken_) {}

Claim& Claim::operator=(Claim&& other) noexcept {
    std::swap(handle_, other.handle_);
    std::swap(isTaken_, other.isTaken_);
    return *this;
}

ClaimedDirectory claimFreeDirectory(const std::string& directory, const std::string& others) {
    constexpr unsigned mostRuns = 10'000;
    ClaimedDirectory claimed{directory, {}};
    for (unsigned number = 2; !createDirectories(claimed.path); ++number) {
        claimed.claim = claimDirectory(claimed.path);
        if (!claimed.claim.isTaken() || number > mostRuns) {
            break;
        }
        claimed.path = others + '.' + std::to_string(number);
        claimed.isFirst = false;
    }
    return claimed;
}

} // namespace platform
