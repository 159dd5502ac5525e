#pragma once

#include "Host/Parameters/Parameter.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// A value for a parameter, and how both are typed: "size 16".
struct SheetSetting {
    A_long id = 0;
    double value = 0;
    std::string text;
};

/// What a cell of the sheet sets; nothing for the original picture.
using SheetCell = std::vector<SheetSetting>;

/// What a contact sheet shows, row by row.
using SheetPlan = std::vector<std::vector<SheetCell>>;

/// The original, all shapes, all transitions and a ladder of their progress. `options` are those of
/// OptionNames. Throws Error where the effect has no such parameters.
SheetPlan Overview(const std::vector<Parameter>& parameters,
                   const std::vector<std::string>& options);

/**
 * A row or a grid of all values of one or two parameters, each given as "size=8,16,32", with ranges
 * like "size=8..64x8", eight values from 8 to 64, or as "shape-type" for all choices of a popup or
 * checkbox. The first varies along the rows, the second from row to row; one alone goes on in the
 * next row after `columns` cells. Throws Error where they are not one or two, or can't be varied
 * so.
 */
SheetPlan Variations(const std::vector<std::string>& texts,
                     const std::vector<Parameter>& parameters,
                     const std::vector<std::string>& options, std::size_t columns);

} // namespace Kerovane::Host
