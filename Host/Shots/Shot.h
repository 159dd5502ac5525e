#pragma once

#include "Host/Shots/FrameList.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace Kerovane::Host {

struct ShotFrame {
    A_long number = 0;
    std::filesystem::path input;
    std::filesystem::path output;
};

/// What becomes of frames that have no input file.
enum class MissingFrames {
    Error, ///< the shot isn't begun
    Skip,  ///< they are left out
    Hold   ///< they take the picture of the nearest earlier frame, else of the first there is
};

struct ShotRequest {
    std::filesystem::path input;     ///< a sequence, or one picture for all frames
    std::filesystem::path output;    ///< a sequence, or one picture if there is one frame
    std::optional<FrameList> frames; ///< else from the first to the last on disk
    MissingFrames missing = MissingFrames::Error;
    Chunk chunk;
    bool toOneFile = false; ///< whether `output` is a movie, which takes all frames
};

/** Which pictures are to be made of which. */
struct Shot {
    std::vector<ShotFrame> frames; ///< in the order of their numbers
    FrameList missing;             ///< those of the chunk without an input file
};

/// Whether the request is for a sequence: `input` names one rather than a file that there is, or
/// frames are given.
bool AsksForShot(const ShotRequest& request);

/// Throws Error if a frame's output is the file of any frame's input, by whatever name: a frame
/// that is read later would meet what was rendered.
void CheckNotInPlace(const std::vector<ShotFrame>& frames);

/**
 * Looks up what there is on disk. What a frame is made of depends on the sequence alone, not on the
 * chunk or on the other frames asked for. Throws Error if the request can't be carried out as a
 * whole.
 */
Shot PlanShot(const ShotRequest& request);

} // namespace Kerovane::Host
