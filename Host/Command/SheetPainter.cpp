#include "Host/Command/SheetPainter.h"

#include <utility>

namespace Kerovane::Host {

SheetPainter::SheetPainter(FrameRenderer& renderer, Renderer with,
                           const ParameterSettings& settings, FrameRate rate,
                           std::optional<ColourConversion> conversion)
    : mRenderer(renderer),
      mWith(with),
      mRate(rate),
      mValues(ValuesOverTime(settings, rate)),
      mConversion(std::move(conversion)) {}

World SheetPainter::paint(const SheetCell& cell, const World& input) {
    World picture = cell.isOriginal() ? CopyOf(input) : render(cell, input);
    if (mConversion) {
        mConversion->apply(picture);
    }
    return picture;
}

World SheetPainter::render(const SheetCell& cell, const World& input) {
    World output(input.depth(), input.width(), input.height());
    ParameterValues values = mValues;
    for (const SheetSetting& setting : cell.settings) {
        values.set(setting.id, setting.value);
    }
    const Frame frame{.time = mRate.timeOf(cell.frame.value_or(0)), .timeStep = mRate.timeStep()};
    mNonFinitePixels = mRenderer.render(frame, values, ViewOf(input), ViewOf(output), mWith);
    return output;
}

} // namespace Kerovane::Host
