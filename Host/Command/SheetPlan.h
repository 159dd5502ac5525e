#pragma once

#include "Host/Parameters/Parameter.h"
#include "Host/Shots/FrameList.h"

#include <cstddef>
#include <optional>
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

/// What a cell of the sheet sets, and when; neither for the original picture.
struct SheetCell {
    std::vector<SheetSetting> settings{};
    std::optional<A_long> frame{};

    bool isOriginal() const { return settings.empty() && !frame; }
};

/// What a contact sheet shows, row by row.
using SheetPlan = std::vector<std::vector<SheetCell>>;

/// The original, all shapes, all transitions and a ladder of their progress. `options` are those of
/// OptionNames. Throws Error if the effect has no such parameters.
SheetPlan Overview(const std::vector<Parameter>& parameters,
                   const std::vector<std::string>& options);

/// What a sheet goes through.
struct SheetRequest {
    std::vector<std::string> vary; ///< parameters
    FrameList frames;              ///< or nothing
    std::size_t columns = 1;       ///< of what varies alone
};

/**
 * A row or a grid of frames, or of all values of one or two parameters, each given as
 * "size=8,16,32", with ranges like "size=8..64x8", eight values from 8 to 64, or as "shape-type"
 * for all choices of a popup or checkbox. Frames vary along the rows, else the first parameter
 * does, and the other from row to row; one alone goes on in the next row after so many columns.
 * Throws Error if they are not one or two together, or can't be varied so.
 */
SheetPlan Variations(const SheetRequest& request, const std::vector<Parameter>& parameters,
                     const std::vector<std::string>& options);

} // namespace Kerovane::Host
