#include "Host/Shots/Shot.h"

#include "Host/Shots/SequencePattern.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

namespace Kerovane::Host {

namespace {

/// Returns the pattern of a sequence, or nothing if `input` is one picture. An existing file is a
/// picture even if its name looks like a pattern: "photo@2x.png".
std::optional<SequencePattern> InputPattern(const std::filesystem::path& input) {
    return std::filesystem::exists(input) ? std::nullopt : SequencePattern::parse(input);
}

/// The input pictures of a shot.
class ShotInput {
public:
    explicit ShotInput(const std::filesystem::path& input)
        : mPath(input), mPattern(InputPattern(input)) {
        if (mPattern) {
            mOnDisk = mPattern->framesOnDisk();
        }
        if (mPattern && mOnDisk.empty()) {
            throw Error(fmt::format("cannot read '{}': no such file, and no frame of such a "
                                    "sequence",
                                    input.string()));
        }
    }

    FrameList allFrames() const {
        if (!mPattern) {
            throw Error("--frames is needed if the input is one picture");
        }
        return FramesBetween(mOnDisk.front(), mOnDisk.back());
    }

    bool has(A_long frame) const { return !mPattern || std::ranges::binary_search(mOnDisk, frame); }

    std::filesystem::path pathOf(A_long frame) const {
        return mPattern ? mPattern->pathOf(frame) : mPath;
    }

    std::filesystem::path heldPath(A_long frame) const {
        const auto later = std::ranges::upper_bound(mOnDisk, frame);
        return pathOf(later == mOnDisk.begin() ? *later : *std::prev(later));
    }

private:
    std::filesystem::path mPath;
    std::optional<SequencePattern> mPattern;
    FrameList mOnDisk;
};

class ShotOutput {
public:
    ShotOutput(const std::filesystem::path& output, std::size_t frames, bool toOneFile)
        : mPath(output), mPattern(toOneFile ? std::nullopt : SequencePattern::parse(output)) {
        if (!mPattern && frames > 1 && !toOneFile) {
            throw Error(fmt::format("'{}' has no place for the frame's number, like # or %04d",
                                    output.string()));
        }
    }

    std::filesystem::path pathOf(A_long frame) const {
        return mPattern ? mPattern->pathOf(frame) : mPath;
    }

private:
    std::filesystem::path mPath;
    std::optional<SequencePattern> mPattern;
};

/// Returns device and inode, which identify a file under all its names, or nothing if the file does
/// not exist.
std::optional<std::pair<dev_t, ino_t>> NumberOf(const std::filesystem::path& file) {
    struct stat status {};
    return stat(file.c_str(), &status) == 0 ? std::optional(std::pair(status.st_dev, status.st_ino))
                                            : std::nullopt;
}

} // namespace

void CheckNotInPlace(const std::vector<ShotFrame>& frames) {
    std::set<std::pair<dev_t, ino_t>> inputs;
    for (const ShotFrame& frame : frames) {
        if (const auto number = NumberOf(frame.input)) {
            inputs.insert(*number);
        }
    }
    for (const ShotFrame& frame : frames) {
        const auto number = NumberOf(frame.output);
        if (number && inputs.contains(*number)) {
            throw Error(fmt::format("'{}' is input and output; nothing is rendered in place",
                                    frame.output.string()));
        }
    }
}

bool AsksForShot(const ShotRequest& request) {
    return request.frames || InputPattern(request.input);
}

Shot PlanShot(const ShotRequest& request) {
    const ShotInput input(request.input);
    const FrameList all = request.frames ? *request.frames : input.allFrames();
    const ShotOutput output(request.output, all.size(), request.toOneFile);
    Shot shot;
    for (const A_long frame : FramesOf(request.chunk, all)) {
        const bool there = input.has(frame);
        if (!there) {
            shot.missing.push_back(frame);
        }
        if (there || request.missing == MissingFrames::Hold) {
            shot.frames.push_back({.number = frame,
                                   .input = there ? input.pathOf(frame) : input.heldPath(frame),
                                   .output = output.pathOf(frame)});
        }
    }
    if (!shot.missing.empty() && request.missing == MissingFrames::Error) {
        throw Error(fmt::format("'{}' lacks the frames {}; --missing skip or --missing hold goes "
                                "on without them",
                                request.input.string(), FormatFrames(shot.missing)));
    }
    CheckNotInPlace(shot.frames);
    return shot;
}

} // namespace Kerovane::Host
