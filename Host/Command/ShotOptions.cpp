#include "Host/Command/ShotOptions.h"

#include "Host/Command/ReadOption.h"
#include "Host/Command/ValueTypes.h"
#include "Host/Text/Choice.h"

#include <CLI/Validators.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <thread>

namespace Kerovane::Host {

namespace {

constexpr std::size_t kMostThreads = 256;

std::size_t DefaultThreads() {
    constexpr std::size_t kEnough = 16; // enough to keep one rendering thread busy
    return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kEnough);
}

/// The names of MissingFrames, in the enum's order.
const std::vector<std::string>& MissingNames() {
    static const std::vector<std::string> kNames{"error", "skip", "hold"};
    return kNames;
}

MissingFrames ParseMissing(const std::string& text) {
    return static_cast<MissingFrames>(PlaceAmong(MissingNames(), text));
}

template <typename Value>
CLI::Option* Add(CLI::App& command, const char* name, Value& value, const std::string& type,
                 const std::string& text) {
    return command.add_option(name, value, text)->type_name(type)->group("Sequences");
}

} // namespace

ShotOptions::ShotOptions() : mThreads(DefaultThreads()) {}

void ShotOptions::addFootageTo(CLI::App& command) {
    Add(command, "--frames", mFrames, "LIST",
        "1001-1100, 1001-1100x2 or 1,5,9 [all from first to last on disk]");
    Add(command, "--fps", mRate, "RATE",
        "frames a second of pictures: 25, 23.976 or 24000/1001 [24]");
    Add(command, "--missing", mMissing, ChoiceType(MissingNames()),
        "what to do with missing frames [error]");
}

void ShotOptions::addTo(CLI::App& command) {
    addFootageTo(command);
    Add(command, "--chunk", mChunk, "K/N", "the K-th of N parts of the frames: 3/10 [1/1]");
    command
        .add_flag("--resume", mResume,
                  "keep outputs that are complete and made with the same settings")
        ->group("Sequences");
    command.add_flag("--no-clobber", mNoClobber, "keep all existing outputs, without reading them")
        ->group("Sequences");
    Add(command, "--threads", mThreads, "N",
        fmt::format("threads that read and write files [{}]", mThreads))
        ->check(CLI::Range(std::size_t{1}, kMostThreads).description(""));
    Add(command, "--max-frames-in-flight", mInFlight, "N",
        "frames in memory at a time [threads + 1]")
        ->check(CLI::Range(std::size_t{1}, std::size_t{4} * kMostThreads).description(""));
    command
        .add_option("--depth", mDepth, "bits per channel to work at [8 if IN has no more, else 32]")
        ->check(CLI::IsMember({8, 16, 32}).description(""))
        ->type_name(ChoiceType({"8", "16", "32"}));
}

std::vector<std::string> ShotOptions::footageWords() const {
    std::vector<std::string> words;
    if (hasRate()) {
        words.insert(words.end(), {"--fps", mRate});
    }
    if (mMissing != MissingNames().front()) {
        words.insert(words.end(), {"--missing", mMissing});
    }
    return words;
}

ShotRequest ShotOptions::request(const std::filesystem::path& input,
                                 const std::filesystem::path& output) const {
    ShotRequest request;
    request.input = input;
    request.output = output;
    if (!mFrames.empty()) {
        request.frames = ReadOption("--frames", mFrames, ParseFrames);
    }
    request.missing = ReadOption("--missing", mMissing, ParseMissing);
    request.chunk = ReadOption("--chunk", mChunk, ParseChunk);
    return request;
}

ShotSetting ShotOptions::setting() const {
    const std::size_t most = mThreads + 1; // one renders while the others read and write files
    return {.framesInFlight = mInFlight != 0 ? std::min(mInFlight, most) : most,
            .reading = {.depth =
                            mDepth != 0 ? std::optional(static_cast<Depth>(mDepth)) : std::nullopt},
            .conversion = {},
            .pictures = {.resume = mResume, .keepExisting = mNoClobber}};
}

FrameRate ShotOptions::rate() const {
    return hasRate() ? ReadOption("--fps", mRate, ParseFrameRate) : FrameRate();
}

} // namespace Kerovane::Host
