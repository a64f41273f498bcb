#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace reference_host {

/// A command line split into arguments, in the shape in which programs receive theirs.
///
/// Blanks, tabs and line ends separate arguments. Double quotes hold them together and are dropped;
/// a quote that is never closed holds to the end of the line. No character escapes another.
class ArgumentList {
  public:
    ArgumentList() = default;
    explicit ArgumentList(std::string_view commandLine);
    ~ArgumentList() = default;
    // The entries point at the texts, which a move leaves in place and a copy would not.
    ArgumentList(ArgumentList&&) noexcept = default;
    ArgumentList& operator=(ArgumentList&&) noexcept = default;
    ArgumentList(const ArgumentList&) = delete;
    ArgumentList& operator=(const ArgumentList&) = delete;

    /// Number of arguments.
    [[nodiscard]] int count() const;

    /// The arguments and a null entry after the last; valid as long as this list.
    char** values();

  private:
    std::vector<std::string> texts_;
    std::vector<char*> values_{nullptr};
};

} // namespace reference_host
