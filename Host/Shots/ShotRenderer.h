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

/// Spent in each stage, without waiting for the others.
struct StageSeconds {
    double read = 0;
    double render = 0;
    double write = 0;
};

enum class FrameEnding {
    Rendered,
    Kept, ///< its file was there and whole
    Failed
};

struct FrameReport {
    FrameEnding ending = FrameEnding::Failed;
    std::string reason; ///< of a failure, one line
    StageSeconds seconds;
    A_long width = 0; ///< pixels; 0 if the input can't be read
    A_long height = 0;
    std::size_t nonFinitePixels = 0; ///< of the input, whose NaN and infinities counted as 0
    std::vector<std::string>
        remarks; ///< such as what of the input isn't in the output, a line each
};

struct ShotSetting {
    std::size_t framesInFlight = 1; ///< each on a thread of its own
    ReadSetting reading;
    std::optional<ColourConversion> conversion; ///< of what was rendered
    PictureSinkSetting pictures;                ///< of a shot of pictures
};

/// What the frames are drawn with.
struct ShotDrawing {
    FrameRenderer& renderer;
    Renderer with = Renderer::OpenGL;
    ParameterValues values;
    FrameRate rate;
    A_long downsample = 1;
};

/// Called once for each frame that began, as it ends; from any thread, one call at a time, in the
/// order of the frames.
using FrameEnded = std::function<void(const ShotFrame&, const FrameReport&)>;

/**
 * Renders frames from a source to a sink, several at a time. A frame that fails does not keep the
 * others from going on. Once `stop` is true no further frame begins. Throws Error if the source or
 * the sink can't go on.
 */
void RenderFrames(FrameSource& source, FrameSink& sink, const ShotSetting& setting,
                  const ShotDrawing& drawing, const FrameEnded& ended,
                  const std::atomic<bool>& stop);

/// Renders each frame of a shot of pictures. No file comes to stand half written; a frame that
/// fails leaves its target as it was.
void RenderShot(const std::vector<ShotFrame>& frames, const ShotSetting& setting,
                const ShotDrawing& drawing, const FrameEnded& ended, const std::atomic<bool>& stop);

} // namespace Kerovane::Host
