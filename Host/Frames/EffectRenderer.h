#pragma once

#include "Host/Frames/WorldView.h"
#include "Host/Session/Effect.h"
#include "Host/Session/EffectModules.h"

#include <optional>
#include <utility>

namespace Kerovane::Host {

/**
 * The effect, and the layers it needs for pixels in other layouts than its own. Must be used on one
 * thread only.
 */
class EffectRenderer {
public:
    /// Loads and sets up the module for 8-bit frames; the other module is loaded when the first
    /// deeper frame is rendered. Throws Error if the effect cannot be loaded or set up.
    explicit EffectRenderer(EffectModules modules)
        : mModules(std::move(modules)), mEffect(mModules.bits8) {}

    Effect& effect() { return mEffect; }

    /// Renders with the effect as FrameRenderer::render describes.
    void render(const Frame& frame, const ParameterValues& values, const ConstPixelView& in,
                const PixelView& out);

private:
    Effect& effectFor(Depth depth);

    EffectModules mModules;
    Effect mEffect;
    std::optional<Effect> mDeeperEffect; ///< for deeper frames, if they have another module
    // Layers for pixels that cannot be used in place. Kept for the next frame.
    std::optional<World> mInput;
    std::optional<World> mOutput;
};

} // namespace Kerovane::Host
