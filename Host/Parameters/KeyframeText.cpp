#include "Host/Parameters/KeyframeText.h"

#include "Host/Parameters/ParameterText.h"
#include "Host/Text/Error.h"
#include "Host/Text/NearestNames.h"
#include "Host/Text/NumberText.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace Kerovane::Host {

namespace {

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

Interpolation ParseInterpolation(const Parameter& parameter, std::string_view text) {
    std::vector<std::string> names;
    for (const Interpolation interpolation : Interpolations(parameter)) {
        if (InterpolationName(interpolation) == text) {
            return interpolation;
        }
        names.emplace_back(InterpolationName(interpolation));
    }
    throw Error(fmt::format("can go {} from key to key, not '{}'{}", fmt::join(names, ", "), text,
                            Suggestion(text, names)));
}

Keyframe ParseKey(const Parameter& parameter, std::string_view text) {
    const std::vector<std::string_view> fields = Split(text, ':');
    const std::optional<double> frame = ParseNumber(fields.front());
    if (!frame || fields.size() < 2 || fields.size() > 3) {
        throw Error(
            fmt::format("takes one value or keys like 1001:{0} 1050:{0}:hold, and '{1}' is no key",
                        FormatValue(parameter, parameter.defaultValue), text));
    }
    return {.frame = *frame,
            .value = ParseValue(parameter, fields[1]),
            .toNext = fields.size() == 3 ? ParseInterpolation(parameter, fields[2])
                                         : Interpolations(parameter).front()};
}

std::string ExactValue(const Parameter& parameter, double value) {
    return parameter.takesWholeNumbers() ? FormatValue(parameter, value) : fmt::format("{}", value);
}

std::string FormatKey(const Parameter& parameter, const Keyframe& key) {
    std::string text = fmt::format("{}:{}", key.frame, ExactValue(parameter, key.value));
    if (key.toNext != Interpolations(parameter).front()) {
        text += fmt::format(":{}", InterpolationName(key.toNext));
    }
    return text;
}

} // namespace

std::vector<Interpolation> Interpolations(const Parameter& parameter) {
    if (!parameter.canVaryOverTime()) {
        return {};
    }
    if (parameter.holdsBetweenKeys()) {
        return {Interpolation::Hold};
    }
    return {Interpolation::Linear, Interpolation::Hold, Interpolation::Smooth};
}

Keyframes ParseKeyframes(const Parameter& parameter, std::string_view text) {
    if (text.find(':') == std::string_view::npos) {
        return Keyframes(ParseValue(parameter, text));
    }
    if (!parameter.canVaryOverTime()) {
        throw Error("can't be animated and takes one value");
    }
    std::vector<Keyframe> keys;
    for (const std::string_view word : Split(text, ' ')) {
        if (!word.empty()) {
            keys.push_back(ParseKey(parameter, word));
        }
    }
    return keys.size() == 1 ? Keyframes(keys.front().value) : Keyframes(std::move(keys));
}

std::string FormatKeyframes(const Parameter& parameter, const Keyframes& keyframes) {
    const std::vector<Keyframe>& keys = keyframes.keys();
    if (keys.size() == 1) {
        return ExactValue(parameter, keys.front().value);
    }
    std::string text;
    for (const Keyframe& key : keys) {
        text += text.empty() ? "" : " ";
        text += FormatKey(parameter, key);
    }
    return text;
}

} // namespace Kerovane::Host
