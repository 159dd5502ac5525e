#include "Host/Shots/FrameList.h"

#include "Host/Text/Error.h"
#include "Host/Text/NumberText.h"
#include "Host/Text/Split.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <optional>

namespace Kerovane::Host {

namespace {

constexpr std::size_t kMostFrames = 1'000'000;

/// Frames that are written as FIRST, FIRST-LAST or FIRST-LASTxSTEP.
struct Range {
    std::int64_t first = 0;
    std::int64_t last = 0;
    std::int64_t step = 1;
};

std::optional<Range> ParseRange(std::string_view text) {
    const std::size_t hyphen = text.find('-', 1); // from 1: a hyphen at 0 is the number's sign
    const std::optional<A_long> first = ParseWhole(text.substr(0, hyphen));
    if (!first || hyphen == std::string_view::npos) {
        return first ? std::optional(Range{.first = *first, .last = *first}) : std::nullopt;
    }
    const std::string_view rest = text.substr(hyphen + 1);
    const std::size_t cross = rest.find('x');
    const std::optional<A_long> last = ParseWhole(rest.substr(0, cross));
    const std::optional<A_long> step =
        cross != std::string_view::npos ? ParseWhole(rest.substr(cross + 1)) : 1;
    if (!last || *last < *first || !step || *step < 1) {
        return std::nullopt;
    }
    return Range{.first = *first, .last = *last, .step = *step};
}

void Append(const Range& range, FrameList& frames) {
    const auto count = static_cast<std::size_t>((range.last - range.first) / range.step + 1);
    if (count > kMostFrames || frames.size() + count > kMostFrames) {
        throw Error(fmt::format("names more than {} frames", kMostFrames));
    }
    for (std::int64_t frame = range.first; frame <= range.last; frame += range.step) {
        frames.push_back(static_cast<A_long>(frame));
    }
}

} // namespace

FrameList ParseFrames(std::string_view text) {
    FrameList frames;
    for (const std::string_view word : Split(text, ',')) {
        const std::optional<Range> range = ParseRange(word);
        if (!range) {
            throw Error(fmt::format(
                "takes frames like 1001-1100, 1001-1100x2 or 1,5,9, and '{}' is none", word));
        }
        Append(*range, frames);
    }
    std::ranges::sort(frames);
    frames.erase(std::unique(frames.begin(), frames.end()), frames.end());
    return frames;
}

FrameList FramesBetween(A_long first, A_long last) {
    FrameList frames;
    Append({.first = first, .last = last}, frames);
    return frames;
}

std::string FormatFrames(std::span<const A_long> frames) {
    std::vector<std::string> ranges;
    for (std::size_t first = 0; first < frames.size();) {
        std::size_t last = first;
        while (last + 1 < frames.size() && frames[last + 1] == frames[last] + 1) {
            ++last;
        }
        ranges.push_back(last == first ? fmt::format("{}", frames[first])
                                       : fmt::format("{}-{}", frames[first], frames[last]));
        first = last + 1;
    }
    return fmt::format("{}", fmt::join(ranges, ", "));
}

Chunk ParseChunk(std::string_view text) {
    const std::vector<std::string_view> terms = Split(text, '/');
    const std::optional<A_long> number = ParseWhole(terms.front());
    const std::optional<A_long> count = ParseWhole(terms.back());
    if (terms.size() != 2 || !number || !count || *number < 1 || *number > *count) {
        throw Error(fmt::format("takes PART/PARTS, such as 1/10 to 10/10, not '{}'", text));
    }
    return {.number = *number, .count = *count};
}

FrameList FramesOf(Chunk chunk, const FrameList& frames) {
    const auto border = [&](A_long chunks) {
        return static_cast<std::ptrdiff_t>(frames.size()) * chunks / chunk.count;
    };
    return {frames.begin() + border(chunk.number - 1), frames.begin() + border(chunk.number)};
}

} // namespace Kerovane::Host
