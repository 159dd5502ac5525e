#pragma once

#include "Adapters/Frei0r/HostFrame.h"
#include "Host/Session/Effect.h"

namespace Kerovane::Frei0r {

/** The effect, set up, and the layers between it and the host's frames. Stays on one thread. */
class FrameRenderer {
public:
    /// Throws Error where the effect can't be set up or can't draw here.
    FrameRenderer();

    /// Throws Error where the effect fails or the frame is larger than OpenGL draws; the output is
    /// untouched then.
    void render(const Host::ParameterValues& values, const HostFrame& frame);

private:
    Host::Effect mEffect;
    Host::World mInput;
    Host::World mOutput;
};

} // namespace Kerovane::Frei0r
