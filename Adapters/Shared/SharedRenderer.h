#pragma once

#include "Host/Frames/FrameRenderer.h"

#include <memory>

namespace Kerovane::Adapters {

/**
 * The renderer of the installed effect, shared by the whole process from the first frame to the
 * last unloading. Hosts unload an adapter once for each time they loaded it, or never. Thread-safe.
 */
class SharedRenderer {
public:
    static void countLoad();

    /// Releases the renderer at the last unloading, once the frames in progress are drawn.
    static void countUnload();

    /**
     * Returns the renderer; sets the effect up at the first call since the last unloading. Throws
     * Error if that fails, and again at every call until the next unloading. The renderer lives as
     * long as the result is held.
     */
    static std::shared_ptr<Host::FrameRenderer> get();
};

} // namespace Kerovane::Adapters
