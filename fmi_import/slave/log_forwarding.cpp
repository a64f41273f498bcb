#include "fmi_import/c_border.h"
#include "fmi_import/fmu.h"
#include "fmi_import/model_description/reference_order.h"

#include <charconv>
#include <cstdarg>
#include <cstdio>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace {

using fmi_import::hideControls;
using fmi_import::Log;

jm_log_level_enu_t levelOf(fmi2_status_t status) {
    switch (status) {
    case fmi2_status_ok:
    case fmi2_status_discard:
    case fmi2_status_pending:
        return jm_log_level_info;
    case fmi2_status_warning:
        return jm_log_level_warning;
    case fmi2_status_error:
        return jm_log_level_error;
    default:
        return jm_log_level_fatal;
    }
}

/// `format` with its arguments, as printf has them.
std::string expanded(const char* format, va_list arguments) {
    va_list copy;
    va_copy(copy, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    if (length < 0) {
        return format;
    }
    std::string text(static_cast<std::size_t>(length), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

std::optional<fmi2_base_type_enu_t> typeFromLetter(char letter) {
    constexpr std::string_view letters = "ribs";
    const auto at = letters.find(letter);
    return at != std::string_view::npos ? std::optional(static_cast<fmi2_base_type_enu_t>(at))
                                        : std::nullopt;
}

/// What "#<reference>#" in a message stands for (FMI 2.0 section 2.1.5): the name of a variable,
/// "#" for an empty reference. Null when it stands for nothing.
const char* meaningOf(const fmi2_import_t* fmu, std::string_view reference) {
    if (reference.empty()) {
        return "#";
    }
    const auto type = typeFromLetter(reference.front());
    std::uint32_t number = 0;
    const char* end = reference.data() + reference.size();
    const auto parsed = std::from_chars(reference.data() + 1, end, number);
    if (!type || fmu == nullptr || parsed.ec != std::errc() || parsed.ptr != end) {
        return nullptr;
    }
    const auto* variable = fmi_import::findByReference(fmu->description, *type, number);
    return variable != nullptr ? variable->name : nullptr;
}

std::string withVariableNames(const fmi2_import_t* fmu, std::string_view message) {
    std::string result;
    for (auto mark = message.find('#'); mark != std::string_view::npos; mark = message.find('#')) {
        const auto end = message.find('#', mark + 1);
        const char* meaning = end != std::string_view::npos
                                  ? meaningOf(fmu, message.substr(mark + 1, end - mark - 1))
                                  : nullptr;
        result.append(message.substr(0, mark)).append(meaning != nullptr ? meaning : "#");
        message.remove_prefix((meaning != nullptr ? end : mark) + 1);
    }
    return result.append(message);
}

/// Hands a text to the logger that does not have to fit the callbacks' buffer, which gets a copy.
/// What a terminal would obey is not let through.
void forward(const Log& log, const char* module, jm_log_level_enu_t level, std::string text) {
    hideControls(text.data(), text.data() + text.size(), "\n\t");
    jm_callbacks* callbacks = log.callbacks();
    std::snprintf(callbacks->errMessageBuffer, JM_MAX_ERROR_MESSAGE_SIZE, "%s", text.c_str());
    if (callbacks->logger != nullptr) {
        callbacks->logger(callbacks, module, level, text.c_str());
    }
}

} // namespace

void fmi2_log_forwarding(fmi2_component_t c, fmi2_string_t instanceName, fmi2_status_t status,
                         fmi2_string_t category, fmi2_string_t message, ...) {
    const auto* fmu = static_cast<const fmi2_import_t*>(c);
    const Log log = fmu != nullptr ? fmu->log : Log(nullptr);
    const jm_log_level_enu_t level = levelOf(status);
    if (level > log.callbacks()->log_level || message == nullptr) {
        return;
    }
    va_list arguments;
    va_start(arguments, message);
    fmi_import::guarded(false, [&] {
        std::string text = category != nullptr ? std::string("[") + category + "]" : "";
        text.append("[FMU status:").append(fmi2_status_to_string(status)).append("] ");
        text += withVariableNames(fmu, expanded(message, arguments));
        forward(log, instanceName != nullptr ? instanceName : "", level, std::move(text));
        return true;
    });
    va_end(arguments);
}
