#pragma once

#include "Adapters/Frei0r/Control.h"
#include "Adapters/Frei0r/SlicedFrame.h"
#include "Host/Frames/FrameRenderer.h"

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace Kerovane::Frei0r {

/**
 * What a host calls an instance: a frame size and the positions of the controls. It draws nothing
 * before the first frame. Frames come one after another, their slices, if the host slices them, at
 * once and on other threads than the one that made the instance.
 */
class Instance {
public:
    /// For frames, or slices, of that size in pixels, above 0. All controls at their defaults.
    Instance(std::size_t width, std::size_t height);

    /// By the control's index in DeclaredControls(), in range. A position is kept as it was set.
    double position(std::size_t control) const { return mPositions[control]; }
    void setPosition(std::size_t control, double position);

    /// The instance's frame size at these addresses.
    HostFrame frameAt(const std::uint32_t* in, std::uint32_t* out) const;

    /**
     * Renders `frame`, or if it is a slice, with the slices that came before it what there is of
     * the whole: when the last slice's call returns, all of it is rendered. Throws Error if
     * rendering fails.
     */
    void update(double time, const HostFrame& frame, Host::FrameRenderer& renderer);

private:
    void take(double time, const HostFrame& slice);
    void renderWith(const HostFrame& slice, Host::FrameRenderer& renderer);

    const std::size_t mWidth;
    const std::size_t mHeight;
    const std::thread::id mMaker = std::this_thread::get_id();
    std::vector<double> mPositions;

    std::mutex mRendering; ///< one slice at a time
    std::mutex mMutex;     ///< guards the members below, which slices share
    std::optional<SlicedFrame> mFrame;
    std::size_t mRenderedSlices = 0; ///< of mFrame
};

} // namespace Kerovane::Frei0r
