#pragma once

#include "Host/Frames/WorldView.h"
#include "Host/Session/Effect.h"
#include "Host/Session/EffectModules.h"

#include <optional>
#include <utility>

namespace Kerovane::Host {

/** The effect, set up, and the layers between it and pixels of other forms. Stays on one thread. */
class EffectRenderer {
public:
    /// Loads the module for frames of 8 bits; the other waits for the first frame that needs it.
    /// Throws Error if the effect can't be loaded or set up.
    explicit EffectRenderer(EffectModules modules)
        : mModules(std::move(modules)), mEffect(mModules.bits8) {}

    Effect& effect() { return mEffect; }

    /// As FrameRenderer::render.
    void render(const Frame& frame, const ParameterValues& values, const ConstPixelView& in,
                const PixelView& out);

private:
    Effect& effectFor(Depth depth);

    EffectModules mModules;
    Effect mEffect;
    std::optional<Effect> mDeeperEffect; ///< if it is of a module of its own
    std::optional<World> mInput;         ///< kept from frame to frame
    std::optional<World> mOutput;
};

} // namespace Kerovane::Host
