#include "Host/Panel/Surprise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <string_view>

namespace Kerovane::Host {

namespace {

/// The limits of a parameter's random values that keep the picture recognizable.
struct Bounds {
    std::string_view name;
    double share; ///< probability that the parameter differs from its default
    Interval range;
    bool isRatio; ///< whether values are spread evenly on a logarithmic scale
};

constexpr std::array<Bounds, 6> kBounds{{
    {"Size", 1, {8, 120}, true},
    {"Ratio", 0.4, {0.2, 5}, true},
    {"Size Random", 0.6, {20, 100}, false},
    {"Dissolve", 0.3, {5, 60}, false},
    {"Transition Progress", 0.35, {15, 65}, false},
    {"Feather", 0.7, {0, 500}, false},
}};

} // namespace

Look Surprise(const std::vector<Parameter>& parameters, Renderer renderer, std::uint64_t seed) {
    std::mt19937_64 engine(seed);
    const auto within = [&engine](double min, double max) {
        return min + (max - min) * std::generate_canonical<double, 53>(engine);
    };
    Look look{.settings = {}, .animated = {}, .renderer = renderer};
    for (const Parameter& parameter : parameters) {
        const auto* const found =
            std::ranges::find(kBounds, parameter.displayName(), &Bounds::name);
        const Bounds bounds = found != kBounds.end()
                                  ? *found
                                  : Bounds{parameter.displayName(), 1, parameter.slider, false};
        const bool isSwitch = parameter.type() == PF_Param_CHECKBOX;
        if (!parameter.hasValue() || isSwitch || within(0, 1) > bounds.share) {
            continue;
        }
        const Interval range = parameter.type() == PF_Param_ANGLE ? Interval{0, 359} : bounds.range;
        double value = bounds.isRatio ? std::exp(within(std::log(range.min), std::log(range.max)))
                                      : within(range.min, range.max);
        constexpr double kSteps = 100;
        value = parameter.takesWholeNumbers() || range.max > kSteps / 2
                    ? std::round(value)
                    : std::round(value * kSteps) / kSteps;
        look.settings.insert_or_assign(
            parameter.id(), Keyframes(std::clamp(value, parameter.valid.min, parameter.valid.max)));
    }
    return look;
}

} // namespace Kerovane::Host
