#include "Host/Command/ShotProgress.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace Kerovane::Host {

namespace {

/// Formats a duration: "1:02:03", "2:03" or "0:03".
std::string Clock(double seconds) {
    constexpr long kSixty = 60;
    const long whole = std::lround(seconds);
    const long minutes = whole / kSixty;
    return minutes < kSixty
               ? fmt::format("{}:{:02}", minutes, whole % kSixty)
               : fmt::format("{}:{:02}:{:02}", minutes / kSixty, minutes % kSixty, whole % kSixty);
}

std::string Line(const ShotFrame& frame, const FrameReport& report, const ShotTally& tally) {
    const bool kept = report.ending == FrameEnding::Kept;
    const std::string whole = // empty for a movie of unknown length
        tally.frames() > 0 ? fmt::format(" of {}", tally.frames()) : std::string();
    return fmt::format("frame {} {} ({}{}, {:.2f} a second)", frame.number,
                       kept ? "kept" : "rendered", tally.ended(), whole, tally.rate());
}

std::string Times(const StageSeconds& seconds) {
    return fmt::format(": read {:.4f} s, render {:.4f} s, write {:.4f} s", seconds.read,
                       seconds.render, seconds.write);
}

} // namespace

ShotProgress::ShotProgress(Verbosity verbosity, StandardStreams& streams)
    : mVerbosity(verbosity), mStreams(streams) {
    if (verbosity == Verbosity::Normal) {
        mBarColumns = streams.terminalColumns().value_or(0);
    }
}

void ShotProgress::frameEnded(const ShotFrame& frame, const FrameReport& report,
                              const ShotTally& tally) {
    if (report.ending == FrameEnding::Failed) {
        removeBar();
        mStreams.complain(fmt::format("frame {}: {}", frame.number, report.reason));
    } else if (mVerbosity == Verbosity::Verbose) {
        mStreams.complain(Line(frame, report, tally) + Times(report.seconds));
    } else if (mVerbosity == Verbosity::Normal && mBarColumns == 0) {
        mStreams.complain(Line(frame, report, tally));
    }
    drawBar(tally);
}

void ShotProgress::finish(const ShotTally& tally) {
    removeBar();
    if (mVerbosity != Verbosity::Quiet) {
        mStreams.complain(tally.summary());
        if (!tally.sizes().empty()) {
            mStreams.complain(tally.sizes());
        }
    }
    if (mVerbosity == Verbosity::Verbose) {
        mStreams.complain(tally.stages());
    }
    if (tally.hasFailures()) {
        mStreams.complain(tally.failures());
    }
}

void ShotProgress::drawBar(const ShotTally& tally) {
    constexpr auto kPause = std::chrono::milliseconds(100);
    const auto now = std::chrono::steady_clock::now();
    if (mBarColumns == 0 || (now - mDrawn < kPause && tally.ended() < tally.frames())) {
        return;
    }
    mDrawn = now;
    const std::string text = fmt::format(" {}/{} {:.2f} fps, {} left", tally.ended(),
                                         tally.frames(), tally.rate(), Clock(tally.secondsLeft()));
    constexpr std::size_t kLongest = 40;
    const auto room = static_cast<std::size_t>(mBarColumns);
    const std::size_t length =
        std::min(kLongest, room > text.size() + 3 ? room - text.size() - 3 : 0);
    const std::size_t full = length * tally.ended() / std::max<std::size_t>(tally.frames(), 1);
    const std::string bar =
        length == 0 ? "" : fmt::format("[{:#<{}}{:.<{}}]", "", full, "", length - full);
    mStreams.draw(fmt::format("\r\x1b[K{}{}", bar, text.substr(0, room - 1)));
}

void ShotProgress::removeBar() {
    if (mBarColumns != 0) {
        mStreams.draw("\r\x1b[K");
    }
}

} // namespace Kerovane::Host
