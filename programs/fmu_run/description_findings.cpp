#include "programs/fmu_run/description_findings.h"

#include "fmi_import/model_description/number_text.h"
#include "programs/fmu_run/alias_checks.h"
#include "programs/fmu_run/one_line.h"
#include "programs/fmu_run/structure_checks.h"
#include "programs/fmu_run/variable_checks.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fmu_run {

namespace {

/// A slave that needs steps of one length must be able to do its own default experiment in them.
void checkDefaultSteps(const DescribedModel& model, DescriptionFindings& findings) {
    const auto& [line, startText, stopText, stepText] = model.experiment;
    const auto number = [](const char* text) {
        return text != nullptr ? fmi_import::realFromText(text) : std::nullopt;
    };
    const auto stop = number(stopText);
    const auto step = number(stepText);
    if (model.identifier == nullptr || model.handlesVariableStep || !stop || !step) {
        return;
    }
    constexpr double roundingError = 1e-9;
    const double steps = (*stop - number(startText).value_or(0.0)) / *step;
    if (std::abs(steps - std::round(steps)) > roundingError * std::max(1.0, std::abs(steps))) {
        findings.add(line, "the default experiment: its stepSize " + quoted(stepText) +
                               " does not divide the time up to " + quoted(stopText) +
                               ", and canHandleVariableCommunicationStepSize is false");
    }
}

} // namespace

std::string quoted(std::string_view text) {
    constexpr std::size_t width = 100;
    return "'" + onOneLine(text, width) + "'";
}

std::vector<DescriptionFinding> DescriptionFindings::sorted() const {
    auto result = findings_;
    std::ranges::stable_sort(result, {}, &DescriptionFinding::line);
    return result;
}

void DescriptionFindings::keep(DescriptionFinding finding, std::size_t& count) {
    constexpr std::size_t mostKept = 1000;
    if (++count <= mostKept) {
        findings_.push_back(std::move(finding));
    }
}

DescriptionFindings findingsIn(const DescribedModel& model) {
    DescriptionFindings findings;
    checkDefaultSteps(model, findings);
    checkVariables(model, findings);
    checkAliases(model, findings);
    checkStructure(model, findings);
    return findings;
}

} // namespace fmu_run
