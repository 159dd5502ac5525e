// A list of frames and the share that a machine renders, on two lines: "1001-1100x2" and "3/10".
#include "Fuzz/Oracle.h"
#include "Fuzz/TextInput.h"
#include "Host/Shots/FrameList.h"

#include <cstdint>
#include <string>

namespace Kerovane::Fuzz {

namespace {

using Host::FrameList;

/// Longer lists are parsed, but writing and comparing them would take too long.
constexpr std::size_t kMostToCompare = 10'000;
constexpr A_long kMostChunks = 64;

std::string WithoutBlanks(std::string text) {
    std::erase(text, ' ');
    return text;
}

void CheckFrames(const FrameList& frames) {
    Expect(!frames.empty(), "a list names a frame");
    Expect(std::ranges::adjacent_find(frames, std::ranges::greater_equal()) == frames.end(),
           "frames grow, each once");
    if (frames.size() <= kMostToCompare) {
        const std::string written = WithoutBlanks(Host::FormatFrames(frames));
        Expect(Host::ParseFrames(written) == frames, "frames are read back as written");
    }
}

void CheckChunks(A_long count, const FrameList& frames) {
    FrameList together;
    for (A_long number = 1; number <= count; ++number) {
        const FrameList part = Host::FramesOf({.number = number, .count = count}, frames);
        const std::size_t least = frames.size() / static_cast<std::size_t>(count);
        Expect(part.size() - least <= 1, "chunks are of one size or one more");
        together.insert(together.end(), part.begin(), part.end());
    }
    Expect(together == frames, "all chunks together are all frames");
}

} // namespace

} // namespace Kerovane::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Kerovane::Fuzz;
    const auto [frameText, chunkText] = SplitInTwo(TextOf(data, size), '\n');
    const auto frames =
        ReadOrError([text = frameText] { return Kerovane::Host::ParseFrames(text); });
    const auto chunk = ReadOrError([text = chunkText] { return Kerovane::Host::ParseChunk(text); });
    if (chunk) {
        Expect(chunk->number >= 1 && chunk->number <= chunk->count, "a chunk is one of all");
    }
    if (frames) {
        CheckFrames(*frames);
    }
    if (frames && chunk) {
        static_cast<void>(Kerovane::Host::FramesOf(*chunk, *frames));
        CheckChunks(std::min(chunk->count, kMostChunks), *frames);
    }
    return 0;
}
