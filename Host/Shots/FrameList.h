#pragma once

#include "A.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// Frame numbers, growing, each once.
using FrameList = std::vector<A_long>;

/**
 * Reads "1001-1100", "1001-1100x2" (every second), "1,5,9" and any such, separated by commas, in
 * any order. Throws Error for other text, or if it names more than a million frames.
 */
FrameList ParseFrames(std::string_view text);

/// All from `first` to `last`. Throws Error as ParseFrames does.
FrameList FramesBetween(A_long first, A_long last);

/// "1001-1003, 1007": short for people, in a form that ParseFrames reads without its blanks.
std::string FormatFrames(std::span<const A_long> frames);

/// The `number`th of `count` parts, counted from 1.
struct Chunk {
    A_long number = 1;
    A_long count = 1;
};

/// Reads "3/10". Throws Error for other text.
Chunk ParseChunk(std::string_view text);

/**
 * A chunk's frames: neighbours, as many in each chunk as in every other or one more. All chunks
 * together are all frames, each in one of them.
 */
FrameList FramesOf(Chunk chunk, const FrameList& frames);

} // namespace Kerovane::Host
