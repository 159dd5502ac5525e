#pragma once

#include "Host/Frames/FrameRenderer.h"

#include <memory>

namespace Kerovane::Adapters {

/**
 * The renderer of the installed effect that all of a process share, from the first frame to the
 * last unloading. Hosts unload an adapter once for each time that they loaded it, or never. All of
 * it may be called from any thread.
 */
class SharedRenderer {
public:
    static void countLoad();

    /// Lets go of the renderer at the last one, which waits for the frames that are being drawn.
    static void countUnload();

    /**
     * Sets the effect up if that hasn't been tried since the last unloading. Throws Error if it
     * can't be set up, the same until the next unloading. The renderer lives for as long as anybody
     * holds it.
     */
    static std::shared_ptr<Host::FrameRenderer> get();
};

} // namespace Kerovane::Adapters
