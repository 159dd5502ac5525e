#include "Host/Panel/Look.h"

#include "Host/Parameters/KeyframeText.h"
#include "Host/Parameters/ParameterText.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace Kerovane::Host {

namespace {

constexpr std::size_t kMostKeys = 10000;
/// Keys closer than this count as one. In the keys' unit, frames or seconds.
constexpr double kSamePlace = 1e-6;

Interpolation InterpolationNamed(const Parameter& parameter, std::string_view name) {
    for (const Interpolation interpolation : Interpolations(parameter)) {
        if (InterpolationName(interpolation) == name) {
            return interpolation;
        }
    }
    throw Error(fmt::format("can't go '{}' from key to key", name));
}

/// Returns `value`, rounded if the parameter takes whole numbers only. Values between keys may be
/// fractions.
double Settable(const Parameter& parameter, double value) {
    return parameter.takesWholeNumbers() ? std::round(value) : value;
}

} // namespace

Look LookOf(ParameterSettings settings, Renderer renderer) {
    Look look{.settings = std::move(settings), .animated = {}, .renderer = renderer};
    for (const auto& [id, keyframes] : look.settings) {
        if (keyframes.keys().size() > 1) {
            look.animated.insert(id);
        }
    }
    return look;
}

void LookEditor::setText(std::string_view text) {
    Keyframes keyframes = ParseKeyframes(mParameter, text);
    if (keyframes.keys().size() > kMostKeys) {
        throw Error(fmt::format("can't have more than {} keys here", kMostKeys));
    }
    keyframes.keys().size() > 1 ? void(mLook.animated.insert(mParameter.id()))
                                : void(mLook.animated.erase(mParameter.id()));
    mLook.settings.insert_or_assign(mParameter.id(), std::move(keyframes));
}

void LookEditor::reset() {
    mLook.settings.erase(mParameter.id());
    mLook.animated.erase(mParameter.id());
}

void LookEditor::setValue(double frame, std::string_view text) {
    if (mLook.animated.contains(mParameter.id())) {
        putKey(frame, text, "");
    } else {
        mLook.settings.insert_or_assign(mParameter.id(), Keyframes(ParseValue(mParameter, text)));
    }
}

void LookEditor::putKey(double frame, std::string_view text, std::string_view interpolation) {
    if (!mParameter.canVaryOverTime()) {
        throw Error("can't be animated");
    }
    const bool hasKeys = mLook.animated.contains(mParameter.id());
    const KeyUnit unit = hasKeys ? current().unit() : KeyUnit::Frames;
    std::vector<Keyframe> keys = hasKeys ? current().keys() : std::vector<Keyframe>();
    Keyframe key{.place = mPlaceOf(frame, unit),
                 .value = text.empty() ? valueAt(frame) : ParseValue(mParameter, text),
                 .toNext = Interpolations(mParameter).front()};
    for (const Keyframe& other : keys) {
        if (std::abs(other.place - key.place) < kSamePlace) {
            key.toNext = other.toNext;
        }
    }
    if (!interpolation.empty()) {
        key.toNext = InterpolationNamed(mParameter, interpolation);
    }
    put(keys, key);
    store(std::move(keys), unit);
}

void LookEditor::removeKey(std::size_t index) {
    std::vector<Keyframe> keys = keysWithout(index);
    if (keys.empty()) {
        mLook.animated.erase(mParameter.id());
    } else {
        store(std::move(keys), current().unit());
    }
}

void LookEditor::moveKey(std::size_t index, double frame) {
    std::vector<Keyframe> keys = keysWithout(index);
    Keyframe key = current().keys()[index];
    const KeyUnit unit = current().unit();
    key.place = mPlaceOf(frame, unit);
    put(keys, key);
    store(std::move(keys), unit);
}

void LookEditor::removeKeys(double frame) {
    mLook.settings.insert_or_assign(mParameter.id(), Keyframes(valueAt(frame)));
    mLook.animated.erase(mParameter.id());
}

const Keyframes& LookEditor::current() const {
    return mLook.settings.at(mParameter.id());
}

std::vector<Keyframe> LookEditor::keysWithout(std::size_t index) const {
    if (!mLook.animated.contains(mParameter.id()) || index >= current().keys().size()) {
        throw Error("has no such key");
    }
    std::vector<Keyframe> keys = current().keys();
    keys.erase(keys.begin() + static_cast<std::ptrdiff_t>(index));
    return keys;
}

void LookEditor::store(std::vector<Keyframe> keys, KeyUnit unit) {
    if (keys.size() > kMostKeys) {
        throw Error(fmt::format("can't have more than {} keys here", kMostKeys));
    }
    mLook.settings.insert_or_assign(mParameter.id(), Keyframes(std::move(keys), unit));
    mLook.animated.insert(mParameter.id());
}

void LookEditor::put(std::vector<Keyframe>& keys, const Keyframe& key) const {
    std::erase_if(keys, [&key](const Keyframe& other) {
        return std::abs(other.place - key.place) < kSamePlace;
    });
    keys.insert(std::ranges::upper_bound(keys, key.place, {}, &Keyframe::place), key);
}

double LookEditor::valueAt(double frame) const {
    const auto found = mLook.settings.find(mParameter.id());
    return found == mLook.settings.end()
               ? mParameter.defaultValue
               : Settable(mParameter, found->second.at(mPlaceOf(frame, found->second.unit())));
}

} // namespace Kerovane::Host
