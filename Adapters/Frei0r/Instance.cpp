#include "Adapters/Frei0r/Instance.h"

#include "Adapters/Frei0r/Declaration.h"
#include "Adapters/Shared/DrawFrame.h"

namespace Kerovane::Frei0r {

namespace {

Host::ParameterValues ValuesAt(const std::vector<double>& positions) {
    const std::vector<Control>& controls = DeclaredControls();
    Host::ParameterValues values;
    for (std::size_t index = 0; index < controls.size(); ++index) {
        values.set(controls[index].id(), controls[index].valueAt(positions[index]));
    }
    return values;
}

} // namespace

Instance::Instance(std::size_t width, std::size_t height) : mWidth(width), mHeight(height) {
    for (const Control& control : DeclaredControls()) {
        mPositions.push_back(control.defaultPosition());
    }
}

void Instance::setPosition(std::size_t control, double position) {
    mPositions[control] = position;
    mFrame.reset(); // the next slice belongs to a new frame
}

HostFrame Instance::frameAt(const std::uint32_t* in, std::uint32_t* out) const {
    return {.width = mWidth, .height = mHeight, .in = in, .out = out};
}

void Instance::update(double time, const HostFrame& frame, Host::FrameRenderer& renderer) {
    take(time, frame);
    const std::lock_guard turn(mRendering);
    renderWith(frame, renderer);
}

void Instance::take(double time, const HostFrame& slice) {
    const std::lock_guard lock(mMutex);
    const bool mayBeSliced = std::this_thread::get_id() != mMaker;
    if (mayBeSliced && mFrame && mFrame->add(time, slice)) {
        return;
    }
    mFrame.emplace(time, slice);
    mRenderedSlices = 0;
}

void Instance::renderWith(const HostFrame& slice, Host::FrameRenderer& renderer) {
    std::unique_lock lock(mMutex);
    const std::size_t slices = mFrame->sliceCount();
    const std::optional<HostFrame> frame = mFrame->joined();
    if (!frame) {
        PassThrough(slice); // another slice between the known ones is still missing
        return;
    }
    if (slices == mRenderedSlices) {
        return; // already rendered together with another slice
    }
    // Slices that arrive during this rendering are rendered together with the present ones, when
    // their own calls get their turn.
    lock.unlock();
    // The values are already those of this frame's time, so no time is passed. Hosts disagree on
    // the unit of time anyway.
    Adapters::DrawFrame(renderer, {}, ValuesAt(mPositions), frame->input(), frame->output());
    lock.lock();
    mRenderedSlices = slices;
}

} // namespace Kerovane::Frei0r
