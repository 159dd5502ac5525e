#include "Adapters/OpenFX/RenderAction.h"

#include "Adapters/OpenFX/Clip.h"
#include "Adapters/OpenFX/Controls.h"
#include "Adapters/OpenFX/FrameArea.h"
#include "Adapters/OpenFX/FrameJob.h"
#include "Adapters/OpenFX/PixelTransfer.h"
#include "Adapters/OpenFX/Suites.h"
#include "Adapters/Shared/DrawFrame.h"
#include "Adapters/Shared/SharedRenderer.h"
#include "Host/Text/Error.h"

#include <memory>
#include <optional>
#include <string>

namespace Kerovane::OpenFX {

namespace {

PixelArea PartOf(const HostPixels& pixels, const std::optional<OfxRectI>& window) {
    if (!window) {
        return {.columns = pixels.columns, .rows = pixels.rows};
    }
    return {.columns = Intersection({window->x1, window->x2}, pixels.columns),
            .rows = Intersection({-window->y2, -window->y1}, pixels.rows)};
}

OfxPointD ScaleOf(const PropertySet& arguments) {
    const OfxPointD scale =
        arguments.point(kOfxImageEffectPropRenderScale).value_or(OfxPointD{1, 1});
    return scale.x > 0 && scale.y > 0 ? scale : OfxPointD{1, 1};
}

} // namespace

void Render(OfxImageEffectHandle effect, const PropertySet& arguments) {
    if (HostSuites().effects->abort(effect) != 0) {
        return;
    }
    const OfxTime time = arguments.real(kOfxPropTime).value_or(0);
    const OfxPointD scale = ScaleOf(arguments);
    const std::string field =
        arguments.text(kOfxImageEffectPropFieldToRender).value_or(kOfxImageFieldNone);

    const Clip outputClip(effect, kOfxImageEffectOutputClipName);
    const std::optional<HostImage> output = outputClip.image(time, scale, field);
    if (!output) {
        throw Host::Error("the host has no image for the output");
    }
    const PixelArea window =
        PartOf(output->pixels, arguments.wholeRect(kOfxImageEffectPropRenderWindow));
    const Clip sourceClip(effect, kOfxImageEffectSimpleSourceClipName);
    const std::optional<HostImage> source = sourceClip.image(time, scale, field);
    if (!source) {
        ClearPixels(output->pixels.within(window.columns, window.rows));
        return;
    }
    const FrameArea area = FrameAreaOf(effect, sourceClip, time);
    const Host::ParameterValues values = ValuesAt(effect, time);
    const std::shared_ptr<Host::FrameRenderer> renderer = Adapters::SharedRenderer::get();
    DrawFrame(area, *source, *output, window,
              [&](const Host::ConstPixelView& in, const Host::PixelView& out) {
                  // The values are already those of this frame's time, so no time is passed.
                  Adapters::DrawFrame(*renderer, {}, values, in, out);
              });
}

} // namespace Kerovane::OpenFX
