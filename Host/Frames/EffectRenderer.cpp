#include "Host/Frames/EffectRenderer.h"

#include "Host/Pixels/ConvertPixels.h"
#include "Host/Session/Drawable.h"
#include "Host/Text/Error.h"

#include <cstdint>

namespace Kerovane::Host {

namespace {

/// Returns whether the effect can use the pixels in place. The effect has one channel order and
/// straight alpha. OpenGL requires the row distance to be a multiple of the pixel size, and
/// naturally aligned channels.
bool IsLayer(const ConstPixelView& view) {
    return view.order == ChannelOrder::Argb && view.alpha == Alpha::Straight &&
           withPixelType(view.depth, [&view](auto type) {
               using Pixel = typename decltype(type)::type;
               constexpr std::ptrdiff_t kBytes = sizeof(Pixel);
               return view.rowBytes >= view.width * kBytes && view.rowBytes % kBytes == 0 &&
                      reinterpret_cast<std::uintptr_t>(view.top) % alignof(Pixel) == 0;
           });
}

/// Returns the pixels as an input layer. The cast is safe because effects do not write to an input
/// layer.
PF_LayerDef LayerOver(const ConstPixelView& view) {
    return LayerOver(const_cast<std::byte*>(view.top), view.depth, view.width, view.height,
                     view.rowBytes);
}

/// Returns `layer`, recreated if its size or depth differs from that of `view`.
World& Fitted(std::optional<World>& layer, const ConstPixelView& view) {
    if (!layer || !HaveSameShape(ViewOf(*layer), view)) {
        layer.emplace(view.depth, view.width, view.height);
    }
    return *layer;
}

} // namespace

Effect& EffectRenderer::effectFor(Depth depth) {
    if (depth == Depth::Bits8 || mModules.deeper == mModules.bits8) {
        return mEffect;
    }
    if (!mDeeperEffect) {
        mDeeperEffect.emplace(mModules.deeper);
    }
    return *mDeeperEffect;
}

void EffectRenderer::render(const Frame& frame, const ParameterValues& values,
                            const ConstPixelView& in, const PixelView& out) {
    if (!HaveSameShape(in, out)) {
        throw Error("the output differs from the input in depth or size");
    }
    CheckDrawable(in.width, in.height);
    ConstPixelView inLayer = in;
    if (!IsLayer(in)) {
        const PixelView kept = ViewOf(Fitted(mInput, in));
        ConvertPixels(in, kept);
        inLayer = kept;
    }
    const PixelView outLayer = IsLayer(out) ? out : ViewOf(Fitted(mOutput, out));
    PF_LayerDef output = LayerOver(outLayer);
    effectFor(in.depth).render(frame, values, LayerOver(inLayer), output);
    if (!IsLayer(out)) {
        ConvertPixels(outLayer, out);
    }
}

} // namespace Kerovane::Host
