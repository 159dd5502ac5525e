#pragma once

#include "Host/Frames/WorldView.h"
#include "Host/Session/Effect.h"

#include <filesystem>
#include <optional>

namespace Kerovane::Host {

/** The effect, set up, and the layers between it and pixels of other forms. Stays on one thread. */
class EffectRenderer {
public:
    /// Throws Error if the effect can't be loaded or set up.
    explicit EffectRenderer(const std::filesystem::path& module) : mEffect(module) {}

    Effect& effect() { return mEffect; }

    /// As FrameRenderer::render.
    void render(const Frame& frame, const ParameterValues& values, const ConstPixelView& in,
                const PixelView& out);

private:
    Effect mEffect;
    std::optional<World> mInput; ///< kept from frame to frame
    std::optional<World> mOutput;
};

} // namespace Kerovane::Host
