#include "Host/Frames/FrameRenderer.h"

#include "Host/Frames/SoftwareFrame.h"
#include "Host/Session/Drawable.h"

namespace Kerovane::Host {

FrameRenderer::FrameRenderer(const EffectModules& modules, EffectOutput output)
    : mThread(modules, output) {
    mThread.run([this](EffectRenderer& renderer) {
        mParameters = renderer.effect().parameters();
        mVersion = renderer.effect().version();
    });
}

std::string FrameRenderer::about() {
    std::string text;
    mThread.run([&text](EffectRenderer& renderer) { text = renderer.effect().about(); });
    return text;
}

void FrameRenderer::checkDrawable() {
    mThread.run([](EffectRenderer&) { CheckDrawable(0, 0); });
}

void FrameRenderer::render(const Frame& frame, const ParameterValues& values,
                           const ConstPixelView& in, const PixelView& out, Renderer with) {
    if (with == Renderer::Software) {
        DrawSoftwareFrame(MosaicParametersOf(mParameters, values, frame), in, out, mThreads);
        return;
    }
    mThread.run([&](EffectRenderer& renderer) { renderer.render(frame, values, in, out); });
}

} // namespace Kerovane::Host
