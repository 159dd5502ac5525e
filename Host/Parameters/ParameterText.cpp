#include "Host/Parameters/ParameterText.h"

#include "Host/Parameters/ParameterMeaning.h"
#include "Host/Text/Error.h"
#include "Host/Text/NearestNames.h"
#include "Host/Text/NumberText.h"
#include "Host/Text/WordList.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace Kerovane::Host {

namespace {

constexpr std::array<std::pair<std::string_view, double>, 8> kCheckboxWords{{
    {"true", 1},
    {"false", 0},
    {"on", 1},
    {"off", 0},
    {"yes", 1},
    {"no", 0},
    {"1", 1},
    {"0", 0},
}};

char Lower(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

/// Returns whether a byte belongs to a word: an ASCII digit, an ASCII lower-case letter, or any
/// byte of a non-ASCII UTF-8 character.
bool IsWordByte(char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'z') ||
           static_cast<unsigned char>(byte) >= 0x80;
}

std::optional<double> ParseChoice(const Parameter& parameter, std::string_view text) {
    const std::string typed = TypedName(text);
    for (std::size_t choice = 0; choice < parameter.choices.size(); ++choice) {
        if (!typed.empty() && TypedName(parameter.choices[choice]) == typed) {
            return static_cast<double>(choice + 1);
        }
    }
    return ParseNumber(text);
}

std::optional<double> ParseCheckbox(std::string_view text) {
    std::string typed(text);
    std::ranges::transform(typed, typed.begin(), Lower);
    for (const auto& [word, value] : kCheckboxWords) {
        if (word == typed) {
            return value;
        }
    }
    return std::nullopt;
}

/// Reads a number with or without the parameter's unit.
std::optional<double> ParseQuantity(const Parameter& parameter, std::string_view text) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 4> kSigns{
        {{"percent", "%"}, {"pixels", "px"}, {"degrees", "deg"}, {"degrees", "\u00B0"}}};
    for (const auto& [unit, sign] : kSigns) {
        if (text.ends_with(sign) && UnitOf(parameter) == unit) {
            return ParseNumber(text.substr(0, text.size() - sign.size()));
        }
    }
    return ParseNumber(text);
}

std::optional<double> Parse(const Parameter& parameter, std::string_view text) {
    switch (parameter.type()) {
    case PF_Param_POPUP:
        return ParseChoice(parameter, text);
    case PF_Param_CHECKBOX:
        return ParseCheckbox(text);
    default:
        return ParseQuantity(parameter, text);
    }
}

} // namespace

std::string TypedName(std::string_view shownName) {
    std::string typed;
    for (const char byte : shownName) {
        const char lower = Lower(byte);
        if (IsWordByte(lower)) {
            typed += lower;
        } else if (!typed.empty() && typed.back() != '-') {
            typed += '-';
        }
    }
    if (!typed.empty() && typed.back() == '-') {
        typed.pop_back();
    }
    return typed;
}

std::string_view TypeName(const Parameter& parameter) {
    switch (parameter.type()) {
    case PF_Param_LAYER:
        return "layer";
    case PF_Param_SLIDER:
        return "slider";
    case PF_Param_FIX_SLIDER:
        return "fixed slider";
    case PF_Param_FLOAT_SLIDER:
        return "float slider";
    case PF_Param_ANGLE:
        return "angle";
    case PF_Param_CHECKBOX:
        return "checkbox";
    case PF_Param_POPUP:
        return "popup";
    case PF_Param_GROUP_START:
        return "group start";
    case PF_Param_GROUP_END:
        return "group end";
    default:
        return "";
    }
}

std::string_view UnitName(const Parameter& parameter) {
    if (parameter.type() == PF_Param_ANGLE) {
        return "degrees";
    }
    return parameter.isPercent() ? "percent" : "";
}

std::vector<std::string> TypedChoices(const Parameter& parameter) {
    if (parameter.type() == PF_Param_CHECKBOX) {
        return {"true", "false"};
    }
    std::vector<std::string> names;
    for (const std::string& choice : parameter.choices) {
        names.push_back(TypedName(choice));
    }
    return names;
}

std::string AcceptedValues(const Parameter& parameter) {
    const std::vector<std::string> choices = TypedChoices(parameter);
    if (!choices.empty()) {
        return WordList(choices);
    }
    const std::string_view kind = parameter.takesWholeNumbers()        ? "a whole number"
                                  : parameter.isPercent()              ? "a percentage"
                                  : parameter.type() == PF_Param_ANGLE ? "an angle in degrees"
                                                                       : "a number";
    return fmt::format("{} from {:g} to {:g}", kind, parameter.valid.min, parameter.valid.max);
}

double ParseValue(const Parameter& parameter, std::string_view text) {
    const std::optional<double> value = Parse(parameter, text);
    if (!value || !parameter.accepts(*value)) {
        const bool isPopup = parameter.type() == PF_Param_POPUP;
        throw Error(fmt::format("takes {}, not '{}'{}", AcceptedValues(parameter), text,
                                isPopup ? Suggestion(text, TypedChoices(parameter)) : ""));
    }
    return *value;
}

std::string FormatValue(const Parameter& parameter, double value) {
    switch (parameter.type()) {
    case PF_Param_POPUP:
        return TypedName(parameter.choices.at(static_cast<std::size_t>(value - 1)));
    case PF_Param_CHECKBOX:
        return value != 0 ? "true" : "false";
    default:
        return parameter.takesWholeNumbers() ? fmt::format("{:.0f}", value)
                                             : fmt::format("{:g}", value);
    }
}

} // namespace Kerovane::Host
