#pragma once

#include "Host/Frames/RenderThread.h"
#include "Host/Frames/WorldView.h"
#include "Host/Parameters/Parameter.h"
#include "Host/Parameters/Renderer.h"

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace Kerovane::Host {

/**
 * Draws frames for the command and for every adapter, with the effect or with the software
 * renderer. The effect lives on a thread of its own (RenderThread). Operations may be called from
 * any thread; those that need the effect run on its thread, one after another, and the caller
 * waits. Operations throw Error if they fail.
 *
 *     FrameRenderer renderer(module);
 *     renderer.checkDrawable();
 *     renderer.render(frame, values, ViewOf(input), ViewOf(output));
 *
 * Only one may exist in a process at a time: the constructor waits until an earlier object is
 * destroyed.
 */
class FrameRenderer {
public:
    /// Loads the effect and sets it up, which does not need OpenGL. Throws Error if either fails.
    /// The module for frames of more than 8 bits is loaded when the first such frame is rendered.
    explicit FrameRenderer(const EffectModules& modules,
                           EffectOutput output = EffectOutput::Dropped);

    /// Uses one module for all frames.
    explicit FrameRenderer(const std::filesystem::path& module,
                           EffectOutput output = EffectOutput::Dropped)
        : FrameRenderer(EffectModules{.bits8 = module, .deeper = module}, output) {}

    /// The parameters by index; the input layer is the first.
    const std::vector<Parameter>& parameters() const { return mParameters; }

    /// The effect's packed version; AE_Effect.h has macros to unpack it.
    A_u_long version() const { return mVersion; }

    /// Returns the effect's about text, with lines separated by '\n'.
    std::string about();

    /// Throws Error if OpenGL cannot be used on this machine. Lets callers stop before they begin
    /// many frames, although `render` checks each of them too.
    void checkDrawable();

    /// Sets the number of threads of the software renderer from the next frame on; 0 means one for
    /// each core.
    void setThreads(int threads) { mThreads = threads; }

    /**
     * Draws `in` into `out`, which has the same size and depth. NaN and infinite channels count as
     * 0. Returns the number of pixels with such channels.
     *
     * The software renderer draws on the calling thread and on threads of its own, directly between
     * the views.
     *
     * The effect reads and writes a view in place if the view has PixelView's default channel order
     * and alpha, rows top down and whole pixels apart, and naturally aligned channels. Other views
     * are copied to or from layers that are reused for the next frame. If rendering fails, a copied
     * output is unchanged, and an output written in place may be partly written. Throws Error if
     * the frame is larger than OpenGL can draw.
     */
    std::size_t render(const Frame& frame, const ParameterValues& values, const ConstPixelView& in,
                       const PixelView& out, Renderer with = Renderer::OpenGL);

private:
    RenderThread mThread;
    std::vector<Parameter> mParameters;
    A_u_long mVersion = 0;
    std::atomic<int> mThreads = 0;
};

} // namespace Kerovane::Host
