#include "Host/Command/ShotOptions.h"

#include "Host/Text/Error.h"
#include "Host/Text/NearestNames.h"

#include <CLI/Validators.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <thread>

namespace Kerovane::Host {

namespace {

constexpr std::size_t kMostThreads = 256;

std::size_t DefaultThreads() {
    constexpr std::size_t kEnough = 16; // for one thread that renders
    return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kEnough);
}

/// What `parse` makes of an option's text; its errors name the option.
template <typename Parse>
auto Read(const char* option, const std::string& text, Parse parse) {
    try {
        return parse(text);
    } catch (const Error& error) {
        throw Error(fmt::format("{} {}", option, error.what()));
    }
}

MissingFrames ParseMissing(const std::string& text) {
    static const std::array<std::string, 3> kNames{"error", "skip", "hold"};
    const auto* const found = std::ranges::find(kNames, text);
    if (found == kNames.end()) {
        throw Error(
            fmt::format("takes error, skip or hold, not '{}'{}", text, Suggestion(text, kNames)));
    }
    return static_cast<MissingFrames>(found - kNames.begin());
}

} // namespace

ShotOptions::ShotOptions() : mThreads(DefaultThreads()) {}

void ShotOptions::addTo(CLI::App& command) {
    const auto add = [&command](const char* name, auto& value, const std::string& text) {
        return command.add_option(name, value, text)->type_name("")->group("Sequences");
    };
    add("--frames", mFrames, "1001-1100, 1001-1100x2 or 1,5,9 [all from first to last on disk]");
    add("--fps", mRate, "frames a second: 25, 23.976 or 24000/1001 [24]");
    add("--missing", mMissing, "frames that aren't there: error, skip or hold [error]");
    add("--chunk", mChunk, "the K-th of N parts of the frames: 3/10 [1/1]");
    command.add_flag("--resume", mResume, "keep the outputs that are there and whole")
        ->group("Sequences");
    add("--threads", mThreads, fmt::format("that read and write files [{}]", mThreads))
        ->check(CLI::Range(std::size_t{1}, kMostThreads).description(""));
    add("--max-frames-in-flight", mInFlight, "frames in memory at a time [threads + 2]")
        ->check(CLI::Range(std::size_t{1}, std::size_t{4} * kMostThreads).description(""));
    command.add_option("--depth", mDepth, "bits of a channel: 8, 16 or 32 [as IN has]")
        ->check(CLI::IsMember({8, 16, 32}).description(""))
        ->type_name("");
}

ShotRequest ShotOptions::request(const std::filesystem::path& input,
                                 const std::filesystem::path& output) const {
    ShotRequest request;
    request.input = input;
    request.output = output;
    if (!mFrames.empty()) {
        request.frames = Read("--frames", mFrames, ParseFrames);
    }
    request.missing = Read("--missing", mMissing, ParseMissing);
    request.chunk = Read("--chunk", mChunk, ParseChunk);
    return request;
}

ShotSetting ShotOptions::setting() const {
    constexpr std::size_t kBeside = 2; // one that is rendered and one that waits to be
    return {.limits = {.threads = mThreads,
                       .itemsInFlight = mInFlight != 0 ? mInFlight : mThreads + kBeside},
            .depth = mDepth != 0 ? std::optional(static_cast<Depth>(mDepth)) : std::nullopt,
            .resume = mResume};
}

FrameRate ShotOptions::rate() const {
    return Read("--fps", mRate, ParseFrameRate);
}

} // namespace Kerovane::Host
