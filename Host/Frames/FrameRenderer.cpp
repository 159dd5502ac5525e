#include "Host/Frames/FrameRenderer.h"

#include "Host/Frames/FiniteFrame.h"
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

std::size_t FrameRenderer::render(const Frame& frame, const ParameterValues& values,
                                  const ConstPixelView& in, const PixelView& out, Renderer with) {
    const FiniteFrame finite(in);
    if (with == Renderer::Software) {
        DrawSoftwareFrame(MosaicParametersOf(mParameters, values, frame), finite.view(), out,
                          mThreads);
    } else {
        mThread.run(
            [&](EffectRenderer& renderer) { renderer.render(frame, values, finite.view(), out); });
    }
    return finite.cleanedPixels();
}

} // namespace Kerovane::Host
