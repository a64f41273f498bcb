#pragma once

#include "programs/fmu_run/described_model.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace fmu_run {

/// Something that is wrong in a model description.
struct DescriptionFinding {
    std::size_t line;
    std::string text;       ///< Names what it is about; one line, without a remedy.
    bool isWarning = false; ///< FMI allows it.
};

/// A text of the model description in quotes, cut where it is too long to be shown.
std::string quoted(std::string_view text);

/// Collects findings. Of errors and of warnings it keeps the first thousand: a crafted file can have
/// one in every third byte.
class DescriptionFindings {
  public:
    void add(std::size_t line, const std::string& text) { keep({line, text}, errors_); }

    /// About a variable, in the line where its element begins.
    void add(const DescribedVariable& variable, const std::string& text) {
        add(variable.line, "variable " + quoted(variable.name) + ": " + text);
    }

    void warn(std::size_t line, const std::string& text) { keep({line, text, true}, warnings_); }

    /// What was kept, in the order of the lines.
    [[nodiscard]] std::vector<DescriptionFinding> sorted() const;

    /// How many there were.
    [[nodiscard]] std::size_t errors() const { return errors_; }

    [[nodiscard]] std::size_t warnings() const { return warnings_; }

  private:
    void keep(DescriptionFinding finding, std::size_t& count);

    std::vector<DescriptionFinding> findings_;
    std::size_t errors_ = 0;
    std::size_t warnings_ = 0;
};

/// Looks for everything that a careful importer refuses (FMI 2.0 sections 2.2.2 to 2.2.8).
DescriptionFindings findingsIn(const DescribedModel& model);

} // namespace fmu_run
