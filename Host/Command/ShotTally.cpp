#include "Host/Command/ShotTally.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

namespace Kerovane::Host {

std::string NonFiniteText(std::size_t pixels) {
    return pixels == 0 ? ""
                       : fmt::format("NaN and infinite channels counted as 0 in {} {}", pixels,
                                     pixels == 1 ? "pixel" : "pixels");
}

void ShotTally::add(const ShotFrame& frame, const FrameReport& report) {
    if (report.width > 0) {
        const auto [size, isNew] =
            mFirstOfSize.emplace(std::pair(report.width, report.height), frame.number);
        size->second = std::min(size->second, frame.number);
    }
    mNonFinitePixels += report.nonFinitePixels;
    mRemarks.insert(report.remarks.begin(), report.remarks.end());
    switch (report.ending) {
    case FrameEnding::Rendered:
        ++mRendered;
        mSeconds.read += report.seconds.read;
        mSeconds.render += report.seconds.render;
        mSeconds.write += report.seconds.write;
        break;
    case FrameEnding::Kept:
        ++mKept;
        break;
    case FrameEnding::Failed:
        mFailed.insert(std::ranges::upper_bound(mFailed, frame.number), frame.number);
        break;
    }
}

double ShotTally::elapsed() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - mStart).count();
}

double ShotTally::rate() const {
    const double seconds = elapsed();
    return seconds > 0 ? static_cast<double>(mRendered) / seconds : 0;
}

double ShotTally::secondsLeft() const {
    const double perSecond = rate();
    return perSecond > 0 ? static_cast<double>(mFrames - ended()) / perSecond : 0;
}

std::string ShotTally::summary() const {
    std::string text = fmt::format("{} of {} frames rendered in {:.1f} s, {:.2f} a second",
                                   mRendered, mFrames, elapsed(), rate());
    if (mKept > 0) {
        text += fmt::format("; {} kept", mKept);
    }
    return text;
}

std::string ShotTally::stages() const {
    const auto count = static_cast<double>(std::max<std::size_t>(mRendered, 1));
    const auto stage = [count](const char* name, double seconds) {
        return fmt::format("{} {:.2f} s ({:.4f} a frame)", name, seconds, seconds / count);
    };
    return fmt::format("{}, {}, {}", stage("reading", mSeconds.read),
                       stage("rendering", mSeconds.render), stage("writing", mSeconds.write));
}

std::string ShotTally::failures() const {
    return fmt::format("{} of {} frames failed: {}", mFailed.size(), mFrames,
                       FormatFrames(mFailed));
}

std::string ShotTally::sizes() const {
    if (mFirstOfSize.size() < 2) {
        return "";
    }
    std::vector<std::string> sizes;
    for (const auto& [size, frame] : mFirstOfSize) {
        sizes.push_back(fmt::format("{} x {} (frame {})", size.first, size.second, frame));
    }
    return fmt::format("the frames differ in size: {}", fmt::join(sizes, ", "));
}

} // namespace Kerovane::Host
