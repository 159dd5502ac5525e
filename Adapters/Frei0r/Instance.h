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
 * An instance of the filter in a host: a frame size and the positions of the controls. It draws
 * nothing before the first frame. Frames arrive one after another. Slices of a frame arrive at the
 * same time, on other threads than the one that created the instance.
 */
class Instance {
public:
    /// Creates an instance for frames, or slices, of that size in pixels. Both sides must be above
    /// 0. All controls start at their defaults.
    Instance(std::size_t width, std::size_t height);

    /// Return and set the position of the control with that index in DeclaredControls(). Positions
    /// outside 0 to 1 are kept too.
    double position(std::size_t control) const { return mPositions[control]; }
    void setPosition(std::size_t control, double position);

    /// Returns a frame of the instance's size at these addresses.
    HostFrame frameAt(const std::uint32_t* in, std::uint32_t* out) const;

    /**
     * Renders `frame`. A slice is joined with the earlier slices of its frame first; when the call
     * for the last slice returns, the whole frame is rendered. Throws Error if rendering fails.
     */
    void update(double time, const HostFrame& frame, Host::FrameRenderer& renderer);

private:
    void take(double time, const HostFrame& slice);
    void renderWith(const HostFrame& slice, Host::FrameRenderer& renderer);

    const std::size_t mWidth;
    const std::size_t mHeight;
    const std::thread::id mMaker = std::this_thread::get_id();
    std::vector<double> mPositions;

    std::mutex mRendering; ///< held while a slice is rendered
    std::mutex mMutex;     ///< guards the members below, which all slices share
    std::optional<SlicedFrame> mFrame;
    std::size_t mRenderedSlices = 0; ///< how many slices of mFrame are rendered
};

} // namespace Kerovane::Frei0r
