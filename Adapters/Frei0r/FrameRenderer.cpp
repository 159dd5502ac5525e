#include "Adapters/Frei0r/FrameRenderer.h"

#include "Adapters/Frei0r/ChannelOrder.h"
#include "Adapters/Frei0r/InstalledModule.h"
#include "Host/Session/Drawable.h"

#include <algorithm>

namespace Kerovane::Frei0r {

namespace {

/// Rows without padding, so that a layer is one run of pixels, as the host's frames are.
Host::World Layer(A_long width, A_long height) {
    constexpr auto kPixel = static_cast<A_long>(sizeof(PF_Pixel8));
    return {Host::Depth::Bits8, width, height, width * kPixel};
}

std::span<std::uint32_t> PixelsOf(Host::World& layer) {
    const std::span<std::byte> bytes = layer.bytes();
    return {reinterpret_cast<std::uint32_t*>(bytes.data()), bytes.size() / sizeof(std::uint32_t)};
}

std::filesystem::path DrawableModule() {
    Host::CheckDrawable(1, 1);
    return InstalledModule();
}

/// Nothing draws what is too large for a layer either.
A_long Side(std::size_t pixels) {
    return static_cast<A_long>(std::min<std::size_t>(pixels, Host::World::kMaxSide + 1));
}

} // namespace

FrameRenderer::FrameRenderer()
    : mEffect(DrawableModule()), mInput(Layer(0, 0)), mOutput(Layer(0, 0)) {}

void FrameRenderer::render(const Host::ParameterValues& values, const HostFrame& frame) {
    const A_long width = Side(frame.width);
    const A_long height = Side(frame.height);
    Host::CheckDrawable(width, height);
    if (mInput.width() != width || mInput.height() != height) {
        mInput = Layer(width, height);
        mOutput = Layer(width, height);
    }
    AlphaFirst(frame.input(), PixelsOf(mInput));
    // The values are those of this moment already, so it needs no time; hosts disagree on its unit.
    mEffect.render({}, values, mInput, mOutput);
    AlphaLast(PixelsOf(mOutput), frame.output());
}

} // namespace Kerovane::Frei0r
