#pragma once

#include "Host/Command/SheetPlan.h"
#include "Host/Frames/FrameRenderer.h"
#include "Host/Parameters/FrameRate.h"
#include "Host/Parameters/ParameterSettings.h"
#include "Host/Parameters/ParameterValues.h"
#include "Host/Pictures/ColourConversion.h"

#include <cstddef>
#include <optional>

namespace Kerovane::Host {

/** Renders the cells of a sheet one by one. */
class SheetPainter {
public:
    /// A cell's settings override `settings`. `renderer` must outlive the painter.
    SheetPainter(FrameRenderer& renderer, Renderer with, const ParameterSettings& settings,
                 FrameRate rate, std::optional<ColourConversion> conversion);

    World paint(const SheetCell& cell, const World& input);

    /// The number of pixels with NaN or infinite channels in the input that was rendered last.
    std::size_t nonFinitePixels() const { return mNonFinitePixels; }

private:
    World render(const SheetCell& cell, const World& input);

    FrameRenderer& mRenderer;
    Renderer mWith;
    FrameRate mRate;
    ParameterValues mValues;
    std::optional<ColourConversion> mConversion;
    std::size_t mNonFinitePixels = 0;
};

} // namespace Kerovane::Host
