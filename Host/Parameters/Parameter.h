#pragma once

#include "AE_Effect.h"

#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// From `min` to `max`, both included.
struct Interval {
    double min = 0;
    double max = 0;

    bool contains(double value) const { return min <= value && value <= max; }
};

/**
 * One parameter as the effect declared it. Numbers are in the user's units: percents and degrees
 * rather than 16.16 fixed point, popups counted from 1, a checkbox 0 or 1.
 */
struct Parameter {
    PF_ParamDef definition{};         ///< as the effect added it
    std::string name;                 ///< as shown; may be empty
    std::string label;                ///< beside a checkbox; may be empty
    std::vector<std::string> choices; ///< of a popup
    double defaultValue = 0;
    Interval valid;    ///< what can be set
    Interval slider;   ///< what its slider reaches, within `valid`
    int precision = 0; ///< decimals shown

    A_long id() const { return definition.uu.id; }
    PF_ParamType type() const { return definition.param_type; }

    /// The name, or the label if the name is empty.
    const std::string& displayName() const { return name.empty() ? label : name; }

    /// False for the layer and for groups.
    bool hasValue() const;
    bool takesWholeNumbers() const;
    bool isPercent() const;
    bool canVaryOverTime() const;

    /// Whether there is nothing between two of its values: choices, switches, and seeds, each of
    /// which stands for a pattern of its own.
    bool holdsBetweenKeys() const;

    /// Whether it can be set to `value`.
    bool accepts(double value) const;
};

/**
 * Reads a definition that an effect adds. Throws Error if this host can't hold it: an unknown
 * type, an empty range, a default outside it, a popup whose names don't match their number.
 */
Parameter MakeParameter(const PF_ParamDef& definition);

/// The definition with `value`, in the user's units, as its value; rounded to what the type holds.
PF_ParamDef DefinitionWithValue(const Parameter& parameter, double value);

/// The parameter with that disk id or display name; null if there is none.
const Parameter* FindParameter(const std::vector<Parameter>& parameters, A_long id);
const Parameter* FindParameter(const std::vector<Parameter>& parameters, std::string_view name);

} // namespace Kerovane::Host
