#pragma once

#include "A.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// Frame numbers in ascending order, without duplicates.
using FrameList = std::vector<A_long>;

/**
 * Reads frames and ranges separated by commas, in any order: "1,5,9", "1001-1100", "1001-1100x2"
 * (every second frame). Throws Error for other text, or if it names more than a million frames.
 */
FrameList ParseFrames(std::string_view text);

/// Returns all frames from `first` to `last`. Throws Error if they are more than a million.
FrameList FramesBetween(A_long first, A_long last);

/// Formats frames compactly for people: "1001-1003, 1007". ParseFrames reads the text if its spaces
/// are removed.
std::string FormatFrames(std::span<const A_long> frames);

/// A part of a list of frames: part `number` of `count`, counted from 1.
struct Chunk {
    A_long number = 1;
    A_long count = 1;
};

/// Reads a chunk such as "3/10". Throws Error for other text.
Chunk ParseChunk(std::string_view text);

/**
 * Returns the consecutive frames of a chunk. Each frame belongs to exactly one chunk, and the
 * chunks' sizes differ by at most one.
 */
FrameList FramesOf(Chunk chunk, const FrameList& frames);

} // namespace Kerovane::Host
