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
 * Draws frames with the effect, or as it would without OpenGL, for the command and for every
 * adapter. The effect lives on a thread of the renderer's own (RenderThread). Operations may be
 * called from any thread: they run there one after another, wait for their end and throw Error if
 * they fail.
 *
 *     FrameRenderer renderer(module);
 *     renderer.checkDrawable();
 *     renderer.render(frame, values, ViewOf(input), ViewOf(output));
 *
 * One at a time in a process: the constructor waits until the one before is gone.
 */
class FrameRenderer {
public:
    /// Loads the effect and sets it up, which takes no OpenGL. Throws Error if either fails. The
    /// module for frames of more than 8 bits follows with the first of them.
    explicit FrameRenderer(const EffectModules& modules,
                           EffectOutput output = EffectOutput::Dropped);

    /// The same with one module for all frames.
    explicit FrameRenderer(const std::filesystem::path& module,
                           EffectOutput output = EffectOutput::Dropped)
        : FrameRenderer(EffectModules{.bits8 = module, .deeper = module}, output) {}

    /// By index, the input layer first.
    const std::vector<Parameter>& parameters() const { return mParameters; }

    /// As the effect packed it; AE_Effect.h has the macros that unpack it.
    A_u_long version() const { return mVersion; }

    /// The effect's about text, its lines separated by '\n'.
    std::string about();

    /// Throws Error if this machine can draw no frame at all, for want of OpenGL: to be asked
    /// before many are begun. `render` finds out for each frame.
    void checkDrawable();

    /// Of the software renderer, from the next frame on; one for each core if 0.
    void setThreads(int threads) { mThreads = threads; }

    /**
     * Draws `in` at `values` into `out`, of the same size and depth. Throws Error also if the frame
     * is larger than OpenGL draws. NaN and infinities count as 0, channel by channel: returns the
     * number of pixels that had any. The software renderer draws on the calling thread and on
     * threads of its own, straight from view to view, without OpenGL. What follows is about the
     * effect.
     *
     * Views of an effect's own form (PixelView as it stands, with rows whole pixels apart and top
     * down, channels at their natural addresses) are read and written in place; others are copied
     * to and from layers that the renderer keeps for the next frame. If rendering fails, an output
     * of another form is untouched; one that is written in place is so up to the point at which the
     * effect begins to write it.
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
