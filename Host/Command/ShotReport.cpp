#include "Host/Command/ShotReport.h"

#include "Host/Text/Error.h"

#include <fmt/format.h>

namespace Kerovane::Host {

namespace {

constexpr int kAllDone = 0;
constexpr int kSomeFailed = 2;
constexpr int kInterrupted = 130;

} // namespace

ShotReport::ShotReport(Rendering rendering, std::size_t frames, Verbosity verbosity,
                       const std::filesystem::path& log, Renderer renderer,
                       StandardStreams& streams)
    : mRendering(rendering),
      mVerbosity(verbosity),
      mStreams(streams),
      mTally(frames),
      mProgress(verbosity, streams) {
    if (!log.empty()) {
        mLog.emplace(log, renderer, streams);
    }
}

void ShotReport::frameEnded(const ShotFrame& frame, const FrameReport& report) {
    mTally.add(frame, report);
    if (mLog) {
        mLog->add(frame, report);
    }
    if (mRendering == Rendering::Shot) {
        mProgress.frameEnded(frame, report, mTally);
    } else {
        mFailure = report.reason;
    }
}

void ShotReport::tellRemarks() {
    for (const std::string& remark : mTally.remarks()) {
        mStreams.complain(remark);
    }
    if (!mTally.nonFinite().empty()) {
        mStreams.complain(mTally.nonFinite());
    }
}

int ShotReport::finish(std::string_view onward) {
    if (!mFailure.empty()) {
        throw Error(mFailure);
    }
    if (mRendering == Rendering::Shot || mVerbosity == Verbosity::Verbose) {
        mProgress.finish(mTally);
    }
    if (mVerbosity != Verbosity::Quiet) {
        tellRemarks();
    }
    if (mTally.ended() < mTally.frames()) {
        mStreams.complain(fmt::format("interrupted with {} of {} frames done; {}", mTally.ended(),
                                      mTally.frames(), onward));
        return kInterrupted;
    }
    return mTally.hasFailures() ? kSomeFailed : kAllDone;
}

} // namespace Kerovane::Host
