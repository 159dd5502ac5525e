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

/// What to do with frames that have no input file.
enum class MissingFrames {
    Error, ///< refuse to render the shot
    Skip,  ///< leave out the frames that have no input file
    Hold   ///< use the nearest earlier file, or the first file if none is earlier
};

struct ShotRequest {
    std::filesystem::path input;     ///< a sequence, or one picture that serves all frames
    std::filesystem::path output;    ///< a sequence, or one picture for a single frame
    std::optional<FrameList> frames; ///< default: from the first to the last on disk
    MissingFrames missing = MissingFrames::Error;
    Chunk chunk;
    bool toOneFile = false; ///< whether `output` is a movie, which holds all frames
};

/** The input and output files of a shot's frames. */
struct Shot {
    std::vector<ShotFrame> frames; ///< in ascending order of their numbers
    FrameList missing;             ///< frames of the chunk without an input file
};

/// Returns whether the request is for a sequence: frames are given, or `input` has a placeholder
/// and is not an existing file.
bool AsksForShot(const ShotRequest& request);

/// Throws Error if a frame's output is the same file as any frame's input, even under another name:
/// a frame rendered later would read the rendered picture.
void CheckNotInPlace(const std::vector<ShotFrame>& frames);

/**
 * Finds the input files on disk. Each frame's input depends on the sequence alone, not on the chunk
 * or the other frames requested. Throws Error if the shot cannot be planned, for example because
 * frames are missing and `missing` is Error.
 */
Shot PlanShot(const ShotRequest& request);

} // namespace Kerovane::Host
