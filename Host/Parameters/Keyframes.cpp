#include "Host/Parameters/Keyframes.h"

#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Kerovane::Host {

namespace {

/// Returns the fraction of the way covered at fraction `t` of the time, both 0 to 1.
double Eased(Interpolation interpolation, double t) {
    switch (interpolation) {
    case Interpolation::Hold:
        return 0;
    case Interpolation::Smooth:
        return t * t * (3 - 2 * t);
    case Interpolation::EaseIn:
        return t * t;
    case Interpolation::EaseOut:
        return t * (2 - t);
    case Interpolation::EaseInOut:
        return t < 0.5 ? 2 * t * t : 1 - 2 * (1 - t) * (1 - t);
    default:
        return t;
    }
}

} // namespace

std::string_view InterpolationName(Interpolation interpolation) {
    switch (interpolation) {
    case Interpolation::Hold:
        return "hold";
    case Interpolation::Smooth:
        return "smooth";
    case Interpolation::EaseIn:
        return "ease-in";
    case Interpolation::EaseOut:
        return "ease-out";
    case Interpolation::EaseInOut:
        return "ease-in-out";
    default:
        return "linear";
    }
}

Keyframes::Keyframes(double value) : mKeys{{.value = value}} {}

Keyframes::Keyframes(std::vector<Keyframe> keys, KeyUnit unit)
    : mKeys(std::move(keys)), mUnit(unit) {
    if (mKeys.empty()) {
        throw Error("has no key");
    }
    const auto later = [](const Keyframe& key, const Keyframe& next) {
        return key.place >= next.place;
    };
    const auto wrong = std::ranges::adjacent_find(mKeys, later);
    if (wrong != mKeys.end()) {
        throw Error(fmt::format("has its key at {} {} behind the one at {}",
                                unit == KeyUnit::Frames ? "frame" : "second",
                                std::next(wrong)->place, wrong->place));
    }
}

double Keyframes::at(double place) const {
    const auto next = std::ranges::upper_bound(mKeys, place, {}, &Keyframe::place);
    if (next == mKeys.begin()) {
        return next->value;
    }
    const Keyframe& last = *std::prev(next);
    if (next == mKeys.end()) {
        return last.value;
    }
    const double time = (place - last.place) / (next->place - last.place);
    return std::lerp(last.value, next->value, Eased(last.toNext, time));
}

} // namespace Kerovane::Host
