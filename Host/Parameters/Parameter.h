#pragma once

#include "AE_Effect.h"

#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// A range that includes both ends.
struct Interval {
    double min = 0;
    double max = 0;

    bool contains(double value) const { return min <= value && value <= max; }
};

/**
 * One parameter as the effect declared it. Values are in the user's units: percent and degrees
 * instead of 16.16 fixed point, popups counted from 1, checkboxes 0 or 1.
 */
struct Parameter {
    PF_ParamDef definition{};         ///< as passed by the effect
    std::string name;                 ///< shown name; may be empty
    std::string label;                ///< text beside a checkbox; may be empty
    std::vector<std::string> choices; ///< names of the choices; empty unless it is a popup
    double defaultValue = 0;
    Interval valid;
    Interval slider;   ///< the slider's range, within `valid`
    int precision = 0; ///< number of decimals shown

    A_long id() const { return definition.uu.id; }
    PF_ParamType type() const { return definition.param_type; }

    /// The name, or the label if the name is empty.
    const std::string& displayName() const { return name.empty() ? label : name; }

    /// Returns false for the layer and for groups.
    bool hasValue() const;
    bool takesWholeNumbers() const;
    bool isPercent() const;
    bool canVaryOverTime() const;

    /// Returns whether no values lie between two keys: true for popups, checkboxes and seeds, whose
    /// neighbouring values have nothing in common.
    bool holdsBetweenKeys() const;

    /// Returns whether the parameter can be set to `value`.
    bool accepts(double value) const;
};

/**
 * Reads a definition that an effect adds. Throws Error if this host does not support it: an unknown
 * type, an empty range, a default outside the range, a popup whose names do not match their count.
 */
Parameter MakeParameter(const PF_ParamDef& definition);

/// Returns the definition set to `value`, which is in the user's units. The value is limited to the
/// valid range and rounded to the parameter's type.
PF_ParamDef DefinitionWithValue(const Parameter& parameter, double value);

/// Return the parameter with that disk id or displayName(), or null.
const Parameter* FindParameter(const std::vector<Parameter>& parameters, A_long id);
const Parameter* FindParameter(const std::vector<Parameter>& parameters, std::string_view name);

} // namespace Kerovane::Host
