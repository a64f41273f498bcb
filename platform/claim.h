#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

/// Something that is to be used by one run at a time. The system holds it until the object ends, or
/// the process in whatever way, and nothing of it stays behind.
class Claim {
  public:
    Claim() = default;
    ~Claim();
    Claim(Claim&& other) noexcept;
    Claim& operator=(Claim&& other) noexcept;
    Claim(const Claim&) = delete;
    Claim& operator=(const Claim&) = delete;

    /// Whether somebody else, in this process or another, holds it, and this object therefore does
    /// not. What cannot be held at all, as on a file system without locks, is nobody's.
    [[nodiscard]] bool isTaken() const { return isTaken_; }

  private:
    friend Claim claimDirectory(const std::string& directory);
    friend Claim claimInProcess(std::string_view name);

    Claim(std::intptr_t handle, bool isTaken) : handle_(handle), isTaken_(isTaken) {}

    void release();

    std::intptr_t handle_ = -1;
    bool isTaken_ = false;
};

/// Claims a directory that is there, against all processes. What is in it can be used as ever.
Claim claimDirectory(const std::string& directory);

/// Claims a name of the caller's choice, against others in this process.
Claim claimInProcess(std::string_view name);

/// A directory that was claimed.
struct ClaimedDirectory {
    std::string path;
    Claim claim;
    bool isFirst = true; ///< It is the one that was wanted.
};

/// Makes and claims `directory`; where that is taken, one that is called as `others` and ".2", then
/// ".3" and so on. Where one cannot be made it is answered without a claim: who uses it will meet
/// the reason.
ClaimedDirectory claimFreeDirectory(const std::string& directory, const std::string& others);

} // namespace platform
