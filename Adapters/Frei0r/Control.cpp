#include "Adapters/Frei0r/Control.h"

#include "Adapters/Frei0r/Frei0rInterface.h"
#include "Host/Parameters/ParameterText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace Kerovane::Frei0r {

namespace {

/// What the effect's own host shows beside its parameters, and its declaration doesn't tell.
struct Note {
    std::string_view name;
    std::string_view meaning;
    std::string_view unit; ///< where the declaration has none
};

constexpr std::array<Note, 13> kNotes{{
    {"Shape Type", "The cells' shape", ""},
    {"Size", "The cells' height", "pixels"},
    {"Ratio", "The cells' width over their height", ""},
    {"Size Random", "How much of the picture looks for larger cells", ""},
    {"Size Level", "How often a cell's size may double", ""},
    {"Size Random Seed", "Another pattern of sizes", ""},
    {"Dissolve", "The share of cells that drop out", ""},
    {"Dissolve Random Seed", "Others drop out", ""},
    {"Transition Type", "How the sweep goes", ""},
    {"Transition Progress", "How far the sweep has come", ""},
    {"Feather", "The width of the sweep's ragged edge", "pixels"},
    {"Direction", "Where the linear sweep goes, 0 right, 90 down", ""},
    {"Use Alpha", "Removed cells leave a hole rather than show the picture", ""},
}};

Note NoteOn(const Host::Parameter& parameter) {
    const auto* const found = std::ranges::find(kNotes, parameter.displayName(), &Note::name);
    return found != kNotes.end() ? *found : Note{};
}

/// An angle has no slider: one turn.
Host::Interval RangeOf(const Host::Parameter& parameter) {
    constexpr Host::Interval kTurn{0, 360};
    return parameter.type() == PF_Param_ANGLE ? kTurn : parameter.slider;
}

double PositionOf(double value, const Host::Interval& range) {
    const double position = (value - range.min) / (range.max - range.min);
    return position >= 0 ? std::min(position, 1.0) : 0; // 0 also where it is not a number
}

/// "0 Linear, 0.5 Radial In, 1 Radial Out"
std::string ChoiceText(const Host::Parameter& parameter) {
    std::string text;
    for (std::size_t choice = 0; choice < parameter.choices.size(); ++choice) {
        const double position = PositionOf(static_cast<double>(choice + 1), parameter.slider);
        text += fmt::format("{}{:.3g} {}", choice == 0 ? "" : ", ", position,
                            parameter.choices[choice]);
    }
    return text;
}

/// "2 to 500 pixels: (pixels - 2) / 498, default 10"
std::string RangeText(const Host::Parameter& parameter, std::string_view unit) {
    const Host::Interval range = RangeOf(parameter);
    const std::string_view quantity = unit.empty() ? "number" : unit;
    const std::string above =
        range.min == 0 ? std::string(quantity) : fmt::format("({} - {:g})", quantity, range.min);
    return fmt::format("{:g} to {:g}{}{}: {} / {:g}, default {:g}", range.min, range.max,
                       unit.empty() ? "" : " ", unit, above, range.max - range.min,
                       parameter.defaultValue);
}

std::string ExplanationOf(const Host::Parameter& parameter) {
    const Note note = NoteOn(parameter);
    if (parameter.type() == PF_Param_CHECKBOX) {
        return std::string(note.meaning);
    }
    const std::string_view declared = Host::UnitName(parameter);
    const std::string positions =
        parameter.type() == PF_Param_POPUP
            ? ChoiceText(parameter)
            : RangeText(parameter, declared.empty() ? note.unit : declared);
    return note.meaning.empty() ? positions : fmt::format("{}; {}", note.meaning, positions);
}

} // namespace

Control::Control(const Host::Parameter& parameter)
    : mId(parameter.id()),
      mType(parameter.type() == PF_Param_CHECKBOX ? F0R_PARAM_BOOL : F0R_PARAM_DOUBLE),
      mName(parameter.displayName()),
      mExplanation(ExplanationOf(parameter)),
      mRange(RangeOf(parameter)),
      mWhole(parameter.takesWholeNumbers()),
      mDefaultPosition(PositionOf(parameter.defaultValue, mRange)) {}

double Control::valueAt(double position) const {
    const double bounded = position >= 0 ? std::min(position, 1.0) : 0;
    const double value = mRange.min + bounded * (mRange.max - mRange.min);
    return mWhole ? std::round(value) : value;
}

} // namespace Kerovane::Frei0r
