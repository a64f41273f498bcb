#pragma once

#include "support/files.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fmilib.h>
#include <string>
#include <string_view>
#include <vector>

namespace import_test {

/// A context that keeps what is logged, beside an empty directory to unpack into.
class Session {
  public:
    Session() {
        callbacks.context = this;
        context = fmi_import_allocate_context(&callbacks);
        std::filesystem::create_directory(directory());
    }

    ~Session() {
        fmi2_import_free(fmu);
        fmi_import_free_context(context);
    }

    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    Session(Session&&) = delete;
    Session& operator=(Session&&) = delete;

    [[nodiscard]] std::filesystem::path directory() const { return outside / "unpacked"; }

    fmi_version_enu_t unpack(const std::filesystem::path& file) {
        return fmi_import_get_fmi_version(context, test_support::narrow(file).c_str(),
                                          test_support::narrow(directory()).c_str());
    }

    fmi2_import_t* parse() {
        fmu = fmi2_import_parse_xml(context, test_support::narrow(directory()).c_str(), nullptr);
        return fmu;
    }

    /// Parses `xml` as the model description.
    fmi2_import_t* parse(std::string_view xml) {
        test_support::writeFile(directory() / "modelDescription.xml", xml);
        return parse();
    }

    /// Unpacks, parses and loads an example FMU.
    jm_status_enu_t load(std::string_view name) {
        unpack(test_support::fmuPath(name));
        return fmi2_import_create_dllfmu(parse(), fmi2_fmu_kind_cs, nullptr);
    }

    [[nodiscard]] bool hasLine(std::string_view line) const {
        return std::ranges::find(log, line) != log.end();
    }

    /// Names below `path`, sorted.
    static std::vector<std::string> namesIn(const std::filesystem::path& path) {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
            names.push_back(entry.path().lexically_relative(path).generic_string());
        }
        std::ranges::sort(names);
        return names;
    }

    test_support::TemporaryDirectory outside;
    /// "level module text", the unpack directory written as "<dir>".
    std::vector<std::string> log;
    jm_callbacks callbacks{std::malloc, std::calloc,      std::realloc, std::free,
                           keep,        jm_log_level_all, nullptr,      {}};
    fmi_import_context_t* context = nullptr;
    fmi2_import_t* fmu = nullptr;

  private:
    static void keep(jm_callbacks* callbacks, jm_string module, jm_log_level_enu_t level,
                     jm_string message) {
        auto& session = *static_cast<Session*>(callbacks->context);
        std::string line = std::to_string(level) + " " + module + " " + message;
        const std::string directory = test_support::narrow(session.directory());
        for (auto at = line.find(directory); at != std::string::npos; at = line.find(directory)) {
            line.replace(at, directory.size(), "<dir>");
        }
        std::ranges::replace(line, '\\', '/');
        session.log.push_back(line);
    }
};

} // namespace import_test
