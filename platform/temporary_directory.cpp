#include "platform/temporary_directory.h"

#include "platform/files.h"

#include <charconv>
#include <chrono>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace platform {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view nameLetters = "abcdefghijklmnopqrstuvwxyz0123456789";
constexpr std::size_t letterCount = 6;

std::string randomLetters(std::size_t count) {
    std::random_device device;
    std::uniform_int_distribution<std::size_t> pick(0, nameLetters.size() - 1);
    std::string result;
    while (result.size() < count) {
        result += nameLetters[pick(device)];
    }
    return result;
}

/// Taken as a whole before the first one is removed: what a listing shows that changes meanwhile is
/// unspecified.
std::vector<fs::path> entriesOf(const fs::path& directory, std::error_code& error) {
    std::vector<fs::path> entries;
    fs::directory_iterator entry(directory, error);
    while (!error && entry != fs::directory_iterator()) {
        entries.push_back(entry->path());
        entry.increment(error);
    }
    return entries;
}

/// Archives bring files and directories that even their owner may not change.
void makeRemovable(const fs::path& path) {
    std::error_code ignored;
    fs::permissions(path, fs::perms::owner_all, fs::perm_options::add, ignored);
}

void removeTree(const fs::path& path, std::error_code& first) {
    const auto note = [&](const std::error_code& error) { first = first ? first : error; };
    std::error_code error;
    const auto status = fs::symlink_status(path, error);
    if (fs::is_directory(status)) {
        makeRemovable(path);
        const auto entries = entriesOf(path, error);
        note(error);
        for (const auto& entry : entries) {
            removeTree(entry, first);
        }
    }
    fs::remove(path, error);
    if (error && fs::is_regular_file(status)) {
        makeRemovable(path);
        fs::remove(path, error);
    }
    note(error);
}

/// The process that made a directory of that name; nothing when the name is of another form.
std::optional<std::uint32_t> makerOf(std::string_view name, std::string_view prefix) {
    if (!name.starts_with(prefix)) {
        return std::nullopt;
    }
    name.remove_prefix(prefix.size());
    std::uint32_t process = 0;
    const auto [rest, error] = std::from_chars(name.data(), name.data() + name.size(), process);
    const auto letters = name.substr(static_cast<std::size_t>(rest - name.data()));
    const bool isName = error == std::errc() && letters.size() == letterCount + 1 &&
                        letters.starts_with('_') &&
                        letters.find_first_not_of(nameLetters, 1) == std::string_view::npos;
    return isName ? std::optional(process) : std::nullopt;
}

void removeAbandoned(const fs::path& parent, std::string_view prefix) {
    std::error_code ignored;
    for (const auto& entry : entriesOf(parent, ignored)) {
        const auto process = makerOf(narrowPath(entry.filename()), prefix);
        if (process && isAbandoned(entry, *process)) {
            removeDirectory(entry);
        }
    }
}

fs::path makeTemporaryDirectory(std::string_view prefix) {
    std::error_code error;
    const auto parent = placeOfTemporaryFiles();
    const auto ownPrefix = std::string(prefix) + std::to_string(processNumber()) + '_';
    removeAbandoned(parent, prefix);
    auto path = makeUniqueDirectory(parent, ownPrefix, error);
    if (error) {
        throw fs::filesystem_error("cannot make a temporary directory", parent, error);
    }
    return path;
}

} // namespace

TemporaryDirectory::TemporaryDirectory(std::string_view prefix)
    : path_(makeTemporaryDirectory(prefix)),
      hold_(holdDirectory(path_)) {}

TemporaryDirectory::~TemporaryDirectory() {
    constexpr int attempts = 10;
    constexpr auto pause = std::chrono::milliseconds(20);
    for (int attempt = 1; removeDirectory(path_) && attempt < attempts; ++attempt) {
        std::this_thread::sleep_for(pause);
    }
    releaseDirectory(hold_);
}

fs::path makeUniqueDirectory(const fs::path& parent, std::string_view prefix,
                             std::error_code& error) {
    constexpr int attempts = 100;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        fs::path path = parent / nativePath(std::string(prefix) + randomLetters(letterCount));
        if (createPrivateDirectory(path, error)) {
            return path;
        }
        if (error) {
            return {};
        }
    }
    error = std::make_error_code(std::errc::file_exists);
    return {};
}

std::error_code removeDirectory(const fs::path& directory) {
    std::error_code first;
    removeTree(directory, first);
    return first;
}

} // namespace platform
