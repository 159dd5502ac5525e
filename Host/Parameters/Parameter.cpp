#include "Host/Parameters/Parameter.h"

#include "Host/Text/Error.h"
#include "Host/Text/Split.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace Kerovane::Host {

namespace {

constexpr double kFixedOne = 65536;

double FromFixed(PF_Fixed fixed) {
    return fixed / kFixedOne;
}

A_long ToLong(double value) {
    using Limits = std::numeric_limits<A_long>;
    return static_cast<A_long>(std::clamp<double>(std::round(value), Limits::min(), Limits::max()));
}

PF_Fixed ToFixed(double value) {
    return ToLong(value * kFixedOne);
}

/// Returns the shortest decimal number that rounds to the float: 0.01 for 0.01f instead of
/// 0.00999999977648.
double FromFloat(float value) {
    const std::string text = fmt::format("{}", value);
    double decimal = value;
    std::from_chars(text.data(), text.data() + text.size(), decimal);
    return decimal;
}

std::string BoundedText(const A_char* text, std::size_t size) {
    return {text, strnlen(text, size)};
}

void ReadSlider(const PF_SliderDef& slider, Parameter& parameter) {
    parameter.defaultValue = slider.dephault;
    parameter.valid = {slider.valid_min * 1.0, slider.valid_max * 1.0};
    parameter.slider = {slider.slider_min * 1.0, slider.slider_max * 1.0};
}

void ReadFixedSlider(const PF_FixedSliderDef& slider, Parameter& parameter) {
    parameter.defaultValue = FromFixed(slider.dephault);
    parameter.valid = {FromFixed(slider.valid_min), FromFixed(slider.valid_max)};
    parameter.slider = {FromFixed(slider.slider_min), FromFixed(slider.slider_max)};
    parameter.precision = slider.precision;
}

void ReadFloatSlider(const PF_FloatSliderDef& slider, Parameter& parameter) {
    parameter.defaultValue = FromFloat(slider.dephault);
    parameter.valid = {FromFloat(slider.valid_min), FromFloat(slider.valid_max)};
    parameter.slider = {FromFloat(slider.slider_min), FromFloat(slider.slider_max)};
    parameter.precision = slider.precision;
}

void ReadAngle(const PF_AngleDef& angle, Parameter& parameter) {
    constexpr Interval kWholeDegrees = {-32768, 32767}; // the range of 16.16 fixed point
    const bool unlimited = angle.valid_min == 0 && angle.valid_max == 0;
    parameter.defaultValue = FromFixed(angle.dephault);
    parameter.valid = unlimited ? kWholeDegrees
                                : Interval{FromFixed(angle.valid_min), FromFixed(angle.valid_max)};
    parameter.slider = parameter.valid;
    parameter.precision = 1;
}

void ReadCheckbox(const PF_CheckBoxDef& box, Parameter& parameter) {
    parameter.label = box.u.nameptr != nullptr ? box.u.nameptr : "";
    parameter.defaultValue = box.dephault != 0 ? 1 : 0;
    parameter.valid = parameter.slider = {0, 1};
}

void ReadPopup(const PF_PopupDef& popup, Parameter& parameter) {
    const auto names = Split(popup.u.namesptr != nullptr ? popup.u.namesptr : "", '|');
    parameter.choices.assign(names.begin(), names.end());
    if (parameter.choices.size() != static_cast<std::size_t>(popup.num_choices)) {
        throw Error(fmt::format("the popup '{}' has {} choices and names {}", parameter.name,
                                popup.num_choices, parameter.choices.size()));
    }
    parameter.defaultValue = popup.dephault;
    parameter.valid = parameter.slider = {1, static_cast<double>(popup.num_choices)};
}

void ReadTypesFields(Parameter& parameter) {
    const PF_ParamDefUnion& fields = parameter.definition.u;
    switch (parameter.type()) {
    case PF_Param_SLIDER:
        return ReadSlider(fields.sd, parameter);
    case PF_Param_FIX_SLIDER:
        return ReadFixedSlider(fields.fd, parameter);
    case PF_Param_FLOAT_SLIDER:
        return ReadFloatSlider(fields.fs_d, parameter);
    case PF_Param_ANGLE:
        return ReadAngle(fields.ad, parameter);
    case PF_Param_CHECKBOX:
        return ReadCheckbox(fields.bd, parameter);
    case PF_Param_POPUP:
        return ReadPopup(fields.pd, parameter);
    case PF_Param_GROUP_START:
    case PF_Param_GROUP_END:
        return;
    default:
        throw Error(fmt::format("the parameter '{}' has the type {}, which this host doesn't know",
                                parameter.name, parameter.type()));
    }
}

} // namespace

bool Parameter::hasValue() const {
    return type() != PF_Param_LAYER && type() != PF_Param_GROUP_START &&
           type() != PF_Param_GROUP_END;
}

bool Parameter::takesWholeNumbers() const {
    return type() == PF_Param_SLIDER || type() == PF_Param_CHECKBOX || type() == PF_Param_POPUP;
}

bool Parameter::isPercent() const {
    A_short flags = 0;
    if (type() == PF_Param_FIX_SLIDER) {
        flags = definition.u.fd.display_flags;
    } else if (type() == PF_Param_FLOAT_SLIDER) {
        flags = definition.u.fs_d.display_flags;
    }
    return (flags & PF_ValueDisplayFlag_PERCENT) != 0;
}

bool Parameter::canVaryOverTime() const {
    return hasValue() && (definition.flags & PF_ParamFlag_CANNOT_TIME_VARY) == 0;
}

bool Parameter::holdsBetweenKeys() const {
    // Recognizes seeds by the name, because declarations do not mark them.
    const bool isSeed = type() == PF_Param_SLIDER && name.ends_with("Seed");
    return type() == PF_Param_POPUP || type() == PF_Param_CHECKBOX || isSeed;
}

bool Parameter::accepts(double value) const {
    return valid.contains(value) && (!takesWholeNumbers() || value == std::floor(value));
}

Parameter MakeParameter(const PF_ParamDef& definition) {
    Parameter parameter;
    parameter.definition = definition;
    parameter.name = BoundedText(definition.name, sizeof definition.name);
    ReadTypesFields(parameter);
    if (!parameter.valid.contains(parameter.defaultValue)) {
        throw Error(fmt::format("the parameter '{}' has its default {} outside {} to {}",
                                parameter.displayName(), parameter.defaultValue,
                                parameter.valid.min, parameter.valid.max));
    }
    return parameter;
}

PF_ParamDef DefinitionWithValue(const Parameter& parameter, double value) {
    const Interval& valid = parameter.valid;
    // Not std::clamp, which would pass NaN through.
    const double bounded = value >= valid.min ? std::min(value, valid.max) : valid.min;
    PF_ParamDef definition = parameter.definition;
    switch (parameter.type()) {
    case PF_Param_SLIDER:
        definition.u.sd.value = ToLong(bounded);
        break;
    case PF_Param_FIX_SLIDER:
        definition.u.fd.value = ToFixed(bounded);
        break;
    case PF_Param_FLOAT_SLIDER:
        definition.u.fs_d.value = bounded;
        break;
    case PF_Param_ANGLE:
        definition.u.ad.value = ToFixed(bounded);
        break;
    case PF_Param_CHECKBOX:
        definition.u.bd.value = ToLong(bounded);
        break;
    case PF_Param_POPUP:
        definition.u.pd.value = ToLong(bounded);
        break;
    default:
        break;
    }
    return definition;
}

const Parameter* FindParameter(const std::vector<Parameter>& parameters, A_long id) {
    const auto found = std::ranges::find_if(parameters, [id](const Parameter& parameter) {
        return parameter.type() != PF_Param_LAYER && parameter.id() == id;
    });
    return found != parameters.end() ? &*found : nullptr;
}

const Parameter* FindParameter(const std::vector<Parameter>& parameters, std::string_view name) {
    const auto found = std::ranges::find(parameters, name, &Parameter::displayName);
    return found != parameters.end() ? &*found : nullptr;
}

} // namespace Kerovane::Host
