#include "Adapters/OpenFX/FrameArea.h"

#include "Adapters/OpenFX/PropertySet.h"
#include "Adapters/OpenFX/Suites.h"
#include "Host/Text/Error.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace Kerovane::OpenFX {

namespace {

/// Edges closer than this to a whole pixel count as whole.
constexpr double kTolerance = 1e-4;

/// Edges at this distance from the origin or beyond count as infinite. Sources such as generators
/// have infinite regions.
constexpr double kEndless = 1e8;

PixelArea PixelsTouchedBy(const OfxRectD& rect, double aspect) {
    const auto below = [](double edge) { return static_cast<int>(std::floor(edge + kTolerance)); };
    const auto above = [](double edge) { return static_cast<int>(std::ceil(edge - kTolerance)); };
    return {.columns = {below(rect.x1 / aspect), above(rect.x2 / aspect)},
            .rows = {-above(rect.y2), -below(rect.y1)}};
}

/// Returns the project's window in canonical coordinates, or nothing if the host states none of
/// finite size.
std::optional<OfxRectD> ProjectWindow(const PropertySet& effect) {
    const std::optional<OfxPointD> size = effect.point(kOfxImageEffectPropProjectSize);
    if (!size || !(size->x > 0 && size->x < kEndless && size->y > 0 && size->y < kEndless)) {
        return std::nullopt;
    }
    const OfxPointD offset = effect.point(kOfxImageEffectPropProjectOffset).value_or(OfxPointD{});
    return OfxRectD{offset.x, offset.y, offset.x + size->x, offset.y + size->y};
}

/// Replaces infinite edges of `region` by the edges of `window`.
OfxRectD Bounded(const OfxRectD& region, const OfxRectD& window) {
    const auto bounded = [](double edge, double instead) {
        return std::abs(edge) < kEndless ? edge : instead; // replaces NaN too
    };
    return {bounded(region.x1, window.x1), bounded(region.y1, window.y1),
            bounded(region.x2, window.x2), bounded(region.y2, window.y2)};
}

} // namespace

OfxRectD FrameArea::canonical() const {
    return {frame.columns.begin * pixelAspect, static_cast<double>(-frame.rows.end),
            frame.columns.end * pixelAspect, static_cast<double>(-frame.rows.begin)};
}

FrameArea FrameAreaOf(OfxImageEffectHandle effect, const Clip& source, OfxTime time) {
    OfxPropertySetHandle properties = nullptr;
    Require(HostSuites().effects->getPropertySet(effect, &properties), "the effect's properties");
    const std::optional<OfxRectD> window = ProjectWindow(PropertySet(properties));
    const std::optional<OfxRectD> region = source.regionOfDefinition(time);
    if (!region && !window) {
        throw Host::Error("the host does not tell the region of the source");
    }
    const double aspect = source.pixelAspect();
    const PixelArea project = PixelsTouchedBy(window.value_or(OfxRectD{}), aspect);
    const PixelArea touched =
        PixelsTouchedBy(Bounded(region ? *region : *window, window.value_or(OfxRectD{})), aspect);
    return {.frame = project.contains(touched) ? project : touched,
            .region = touched,
            .pixelAspect = aspect};
}

} // namespace Kerovane::OpenFX
