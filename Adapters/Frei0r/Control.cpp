#include "Adapters/Frei0r/Control.h"

#include "Adapters/Frei0r/Frei0rInterface.h"
#include "Host/Parameters/ParameterMeaning.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <vector>

namespace Kerovane::Frei0r {

namespace {

/// Returns the slider's range; one turn for an angle, which has no slider.
Host::Interval RangeOf(const Host::Parameter& parameter) {
    constexpr Host::Interval kTurn{0, 360};
    return parameter.type() == PF_Param_ANGLE ? kTurn : parameter.slider;
}

double PositionOf(double value, const Host::Interval& range) {
    const double position = (value - range.min) / (range.max - range.min);
    return position >= 0 ? std::min(position, 1.0) : 0; // 0 for NaN too
}

/// Returns a text such as "0 Linear, 0.5 Radial In, 1 Radial Out".
std::string ChoiceText(const Host::Parameter& parameter) {
    std::vector<std::string> texts;
    for (std::size_t choice = 0; choice < parameter.choices.size(); ++choice) {
        const double position = PositionOf(static_cast<double>(choice + 1), parameter.slider);
        texts.push_back(fmt::format("{:.3g} {}", position, parameter.choices[choice]));
    }
    return fmt::format("{}", fmt::join(texts, ", "));
}

/// Returns a text such as "2 to 500 pixels: (pixels - 2) / 498, or pixels from 2 on, default 10".
std::string RangeText(const Host::Parameter& parameter) {
    const Host::Interval range = RangeOf(parameter);
    const std::string_view unit = Host::UnitOf(parameter);
    const std::string_view quantity = unit.empty() ? "number" : unit;
    const std::string above =
        range.min == 0 ? std::string(quantity) : fmt::format("({} - {:g})", quantity, range.min);
    return fmt::format("{:g} to {:g}{}{}: {} / {:g}, or {} from 2 on, default {:g}", range.min,
                       range.max, unit.empty() ? "" : " ", unit, above, range.max - range.min,
                       quantity, parameter.defaultValue);
}

std::string ExplanationOf(const Host::Parameter& parameter) {
    const std::string_view meaning = Host::MeaningOf(parameter);
    if (parameter.type() == PF_Param_CHECKBOX) {
        return std::string(meaning);
    }
    const std::string positions =
        parameter.type() == PF_Param_POPUP ? ChoiceText(parameter) : RangeText(parameter);
    return meaning.empty() ? positions : fmt::format("{}; {}", meaning, positions);
}

} // namespace

Control::Control(const Host::Parameter& parameter)
    : mId(parameter.id()),
      mType(parameter.type() == PF_Param_CHECKBOX ? F0R_PARAM_BOOL : F0R_PARAM_DOUBLE),
      mName(parameter.displayName()),
      mExplanation(ExplanationOf(parameter)),
      mRange(RangeOf(parameter)),
      mValid(parameter.valid),
      mWhole(parameter.takesWholeNumbers()),
      mDefaultPosition(PositionOf(parameter.defaultValue, mRange)) {}

double Control::valueAt(double position) const {
    constexpr double kFirstInUnits = 2;
    const double bounded = position >= 0 ? std::min(position, 1.0) : 0;
    const double value = position >= kFirstInUnits
                             ? std::clamp(position, mValid.min, mValid.max)
                             : mRange.min + bounded * (mRange.max - mRange.min);
    return mWhole ? std::round(value) : value;
}

} // namespace Kerovane::Frei0r
