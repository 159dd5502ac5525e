#pragma once

#include "Host/Frames/FrameRenderer.h"
#include "Host/Parameters/FrameRate.h"
#include "Host/Parameters/ParameterValues.h"
#include "Host/Pictures/ColourConversion.h"
#include "Host/Shots/FrameSink.h"
#include "Host/Shots/FrameSource.h"
#include "Host/Shots/PictureShot.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// Time spent in each stage, without waiting for other frames.
struct StageSeconds {
    double read = 0;
    double render = 0;
    double write = 0;
};

enum class FrameEnding {
    Rendered,
    Kept, ///< the output existed already
    Failed
};

struct FrameReport {
    FrameEnding ending = FrameEnding::Failed;
    std::string reason; ///< why the frame failed, one line
    StageSeconds seconds;
    A_long width = 0; ///< in pixels; 0 if the input cannot be read
    A_long height = 0;
    std::size_t nonFinitePixels = 0; ///< input pixels with NaN or infinity, taken as 0
    std::vector<std::string>
        remarks; ///< for the user, such as what the output lacks, one line each
};

struct ShotSetting {
    std::size_t framesInFlight = 1; ///< frames in memory at a time, each on a thread of its own
    ReadSetting reading;
    std::optional<ColourConversion> conversion; ///< applied to the rendered picture
    PictureSinkSetting pictures;                ///< used by RenderShot only
};

/// How to draw the frames.
struct ShotDrawing {
    FrameRenderer& renderer;
    Renderer with = Renderer::OpenGL;
    ParameterValues values;
    FrameRate rate;
    A_long downsample = 1;
};

/// Called as each frame ends, in the order of the frames: from any thread, but never concurrently.
/// Not called for frames that end after the source or the sink failed.
using FrameEnded = std::function<void(const ShotFrame&, const FrameReport&)>;

/**
 * Renders frames from a source to a sink, several at a time. A failed frame does not stop the
 * others. No new frame begins once `stop` is true. Throws Error if the source or the sink fails.
 */
void RenderFrames(FrameSource& source, FrameSink& sink, const ShotSetting& setting,
                  const ShotDrawing& drawing, const FrameEnded& ended,
                  const std::atomic<bool>& stop);

/// Renders a shot of picture files. Output files are never left partly written; a failed frame
/// leaves its output file unchanged.
void RenderShot(const std::vector<ShotFrame>& frames, const ShotSetting& setting,
                const ShotDrawing& drawing, const FrameEnded& ended, const std::atomic<bool>& stop);

} // namespace Kerovane::Host
