#include "Host/Parameters/KeyframeText.h"

#include "Host/Parameters/ParameterText.h"
#include "Host/Text/Error.h"
#include "Host/Text/NearestNames.h"
#include "Host/Text/NumberText.h"
#include "Host/Text/Split.h"

#include <fmt/format.h>

#include <optional>
#include <utility>
#include <vector>

namespace Kerovane::Host {

namespace {

constexpr char kSecond = 's'; ///< follows the place of a key that is in seconds

Interpolation ParseInterpolation(const Parameter& parameter, std::string_view text) {
    for (const Interpolation interpolation : Interpolations(parameter)) {
        if (InterpolationName(interpolation) == text) {
            return interpolation;
        }
    }
    const std::vector<std::string> names = InterpolationNames(parameter);
    throw Error(fmt::format("can go {} from key to key, not '{}'{}", fmt::join(names, ", "), text,
                            Suggestion(text, names)));
}

bool IsInSeconds(std::string_view key) {
    return Split(key, ':').front().ends_with(kSecond);
}

Keyframe ParseKey(const Parameter& parameter, std::string_view text) {
    const std::vector<std::string_view> fields = Split(text, ':');
    const std::string_view number =
        fields.front().substr(0, fields.front().size() - (IsInSeconds(text) ? 1 : 0));
    const std::optional<double> place = ParseNumber(number);
    if (!place || fields.size() < 2 || fields.size() > 3) {
        throw Error(
            fmt::format("takes one value or keys like 1001:{0} 1050:{0}:hold, and '{1}' is no key",
                        FormatValue(parameter, parameter.defaultValue), text));
    }
    return {.place = *place,
            .value = ParseValue(parameter, fields[1]),
            .toNext = fields.size() == 3 ? ParseInterpolation(parameter, fields[2])
                                         : Interpolations(parameter).front()};
}

std::string ExactValue(const Parameter& parameter, double value) {
    return parameter.takesWholeNumbers() ? FormatValue(parameter, value) : fmt::format("{}", value);
}

std::string FormatKey(const Parameter& parameter, const Keyframe& key, KeyUnit unit) {
    std::string text = fmt::format("{}{}:{}", key.place, unit == KeyUnit::Seconds ? "s" : "",
                                   ExactValue(parameter, key.value));
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
    return {Interpolation::Linear, Interpolation::Hold,    Interpolation::Smooth,
            Interpolation::EaseIn, Interpolation::EaseOut, Interpolation::EaseInOut};
}

std::vector<std::string> InterpolationNames(const Parameter& parameter) {
    std::vector<std::string> names;
    for (const Interpolation interpolation : Interpolations(parameter)) {
        names.emplace_back(InterpolationName(interpolation));
    }
    return names;
}

Keyframes ParseKeyframes(const Parameter& parameter, std::string_view text) {
    if (text.find(':') == std::string_view::npos) {
        return Keyframes(ParseValue(parameter, text));
    }
    if (!parameter.canVaryOverTime()) {
        throw Error("can't be animated and takes one value");
    }
    std::vector<Keyframe> keys;
    std::size_t inSeconds = 0;
    for (const std::string_view part : Split(text, ' ')) {
        for (const std::string_view word : Split(part, ',')) {
            if (!word.empty()) {
                keys.push_back(ParseKey(parameter, word));
                inSeconds += IsInSeconds(word) ? 1 : 0;
            }
        }
    }
    if (keys.empty()) {
        throw Error(fmt::format("takes one value or keys, not '{}'", text));
    }
    if (inSeconds != 0 && inSeconds != keys.size()) {
        throw Error("has keys at frames and at seconds; all have to be of one kind");
    }
    const KeyUnit unit = inSeconds != 0 ? KeyUnit::Seconds : KeyUnit::Frames;
    return keys.size() == 1 ? Keyframes(keys.front().value) : Keyframes(std::move(keys), unit);
}

std::string FormatKeyframes(const Parameter& parameter, const Keyframes& keyframes) {
    const std::vector<Keyframe>& keys = keyframes.keys();
    if (keys.size() == 1) {
        return ExactValue(parameter, keys.front().value);
    }
    std::vector<std::string> texts;
    for (const Keyframe& key : keys) {
        texts.push_back(FormatKey(parameter, key, keyframes.unit()));
    }
    return fmt::format("{}", fmt::join(texts, " "));
}

} // namespace Kerovane::Host
