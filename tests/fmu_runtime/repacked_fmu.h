#pragma once

#include "fmu_runtime/loaded_fmu.h"
#include "platform/shared_library.h"
#include "support/archive_writer.h"

#include <string>

namespace test_support {

/// The scripted FMU with another model description, as an archive of its own.
class RepackedFmu {
  public:
    /// What stands from `begin` to before `end` in the model description is replaced by `text`.
    RepackedFmu(std::string_view begin, std::string_view end, const std::string& text) {
        const LoadedFmu scripted("scripted");
        const auto content = scripted.unpacked();
        std::string description = readFile(content / "modelDescription.xml");
        const auto position = description.find(begin);
        description.replace(position, description.find(end, position) - position, text);
        const auto binary = std::filesystem::path("binaries") /
                            platform::SharedLibrary::fmiPlatform() /
                            (std::string("scripted") + platform::SharedLibrary::suffix());
        writeArchive(directory_ / "repacked.fmu",
                     {{"modelDescription.xml", description},
                      {binary.generic_string(), readFile(content / binary)}});
    }

    /// Without its ending, as LoadedFmu takes it.
    [[nodiscard]] std::string path() const { return narrow(directory_ / "repacked"); }

  private:
    TemporaryDirectory directory_;
};

} // namespace test_support
