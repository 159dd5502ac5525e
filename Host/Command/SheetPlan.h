#pragma once

#include "Host/Parameters/Parameter.h"
#include "Host/Shots/FrameList.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// A parameter's value, with the text that labels it: "size 16".
struct SheetSetting {
    A_long id = 0;
    double value = 0;
    std::string text;
};

/// The settings and frame of one picture on the sheet. The original picture has neither.
struct SheetCell {
    std::vector<SheetSetting> settings{};
    std::optional<A_long> frame{};

    bool isOriginal() const { return settings.empty() && !frame; }
};

/// The cells of a sheet, row by row.
using SheetPlan = std::vector<std::vector<SheetCell>>;

/// Returns a plan with the original, all shapes, all transitions, and several stages of a
/// transition. `options` come from OptionNames. Throws Error if the effect lacks these parameters.
SheetPlan Overview(const std::vector<Parameter>& parameters,
                   const std::vector<std::string>& options);

/// What varies on a sheet.
struct SheetRequest {
    std::vector<std::string> vary; ///< texts of --vary
    FrameList frames;              ///< empty: frames do not vary
    std::size_t columns = 1;       ///< cells in a row, if only one thing varies
};

/**
 * Returns a plan with the values of one or two parameters, or with frames and the values of one
 * parameter. A parameter is given as "size=8,16,32", with ranges such as "size=8..64x8" (eight
 * values from 8 to 64), or as "shape-type" for all choices of a popup or checkbox.
 *
 * Frames, or else the first parameter, vary along a row, and the other parameter from row to row.
 * If only one thing varies, rows are wrapped after `columns` cells. Throws Error if neither one nor
 * two things vary, or if a value is not accepted.
 */
SheetPlan Variations(const SheetRequest& request, const std::vector<Parameter>& parameters,
                     const std::vector<std::string>& options);

} // namespace Kerovane::Host
