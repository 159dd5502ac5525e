#include "Host/Command/RenderCommand.h"

#include "Host/Command/JsonLog.h"
#include "Host/Command/ShotProgress.h"
#include "Host/Command/ShotTally.h"
#include "Host/Pictures/PictureWriter.h"
#include "Host/Session/Drawable.h"
#include "Host/Shots/Interruption.h"
#include "Host/Text/Error.h"

#include <CLI/Validators.hpp>

#include <csignal>
#include <optional>

namespace Kerovane::Host {

namespace {

/// Draws worlds with what the line sets. Without OpenGL the effect draws nothing and reports
/// nothing, so it is asked for beforehand.
class FrameRenderer {
public:
    FrameRenderer(Effect& effect, const ParameterSettings& settings, FrameRate rate,
                  A_long downsample)
        : mEffect(effect),
          mValues(ValuesOverTime(settings, rate)),
          mRate(rate),
          mDownsample(downsample) {
        CheckDrawable(0, 0);
    }

    void render(A_long frame, const World& input, World& output) {
        CheckDrawable(input.width(), input.height());
        mEffect.render(
            {.time = mRate.timeOf(frame), .timeStep = mRate.timeStep(), .downsample = mDownsample},
            mValues, input, output);
    }

private:
    Effect& mEffect;
    ParameterValues mValues;
    FrameRate mRate;
    A_long mDownsample;
};

/// A single picture is frame 0, and what fails with it fails as a whole.
Shot SinglePicture(const ShotRequest& request) {
    Shot shot;
    shot.frames.push_back({.number = 0, .input = request.input, .output = request.output});
    return shot;
}

void TellMissing(const Shot& shot, MissingFrames missing, StandardStreams& streams) {
    if (!shot.missing.empty()) {
        streams.complain(fmt::format("missing frames {}: {}",
                                     missing == MissingFrames::Hold ? "held" : "skipped",
                                     FormatFrames(shot.missing)));
    }
}

/// Targets that can't be written at all are told of before anything is rendered.
void CheckTarget(const Shot& shot) {
    if (!shot.frames.empty()) {
        PictureWriter(shot.frames.front().output);
    }
}

void CheckTimes(const Shot& shot, FrameRate rate) {
    if (!shot.frames.empty()) {
        rate.timeOf(shot.frames.front().number);
        rate.timeOf(shot.frames.back().number);
    }
}

/// So that where a file may not grow, or nobody listens any more, writing fails as it does on a
/// full disk, and the process goes on.
void LetWritingFail() {
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

constexpr int kAllDone = 0;
constexpr int kSomeFailed = 2;
constexpr int kInterrupted = 130;

int Status(const ShotTally& tally) {
    if (tally.ended() < tally.frames()) {
        return kInterrupted;
    }
    return tally.hasFailures() ? kSomeFailed : kAllDone;
}

} // namespace

void RenderCommand::addTo(CLI::App& command) {
    constexpr int kMaxDownsample = 64;
    command.add_option("IN", mIn, "picture to read, or sequence: shot.#.png, shot.%04d.exr")
        ->required()
        ->type_name("");
    command.add_option("OUT", mOut, "picture or sequence to write, as its extension says")
        ->required()
        ->type_name("");
    mShot.addTo(command);
    command
        .add_option("--downsample", mDownsample,
                    "IN is a preview, reduced so many times: pixels in parameters follow [1]")
        ->check(CLI::Range(1, kMaxDownsample).description(""))
        ->type_name("");
    mPreset.addTo(command);
    command.add_flag("--quiet", mQuiet, "show failures only")->group("Progress");
    command.add_option("--json-log", mJsonLog, "file for a line of JSON a frame; - is the output")
        ->type_name("")
        ->group("Progress");
    command.footer("A parameter takes one value, or keys FRAME:VALUE with linear, hold or smooth "
                   "behind them.\n\nExamples:\n"
                   "  tesselune render photo.jpg cells.png --shape-type triangle --size 40\n"
                   "  tesselune render shot.#.exr out.#.exr --frames 1001-1050 \\\n"
                   "      --transition-progress \"1001:0:smooth 1050:100\"");
}

void RenderCommand::addParametersTo(CLI::App& command, const Effect& effect) {
    mParameters.addTo(command, effect.parameters());
}

ParameterSettings RenderCommand::settings(const Effect& effect) const {
    ParameterSettings settings = mParameters.settings();
    settings.merge(mPreset.load(effect)); // adds what isn't there
    return settings;
}

int RenderCommand::run(Effect& effect, StandardStreams& streams, bool verbose) const {
    const Verbosity verbosity = verbose  ? Verbosity::Verbose
                                : mQuiet ? Verbosity::Quiet
                                         : Verbosity::Normal;
    const ParameterSettings settings = this->settings(effect);
    const ShotRequest request = mShot.request(mIn, mOut);
    const FrameRate rate = mShot.rate();
    const bool isShot = AsksForShot(request);
    const Shot shot = isShot ? PlanShot(request) : SinglePicture(request);
    CheckTimes(shot, rate);
    CheckTarget(shot);
    FrameRenderer renderer(effect, settings, rate, mDownsample);
    std::optional<JsonLog> log;
    if (!mJsonLog.empty()) {
        log.emplace(mJsonLog, streams);
    }
    mPreset.save(effect, settings);
    TellMissing(shot, request.missing, streams);

    LetWritingFail();
    const Interruption interruption;
    ShotTally tally(shot.frames.size());
    ShotProgress progress(verbosity, streams);
    std::string failure;
    const auto render = [&](const ShotFrame& frame, const World& input, World& output) {
        renderer.render(frame.number, input, output);
    };
    const auto ended = [&](const ShotFrame& frame, const FrameReport& report) {
        tally.add(frame, report);
        if (log) {
            log->add(frame, report);
        }
        if (isShot) {
            progress.frameEnded(frame, report, tally);
        }
        failure = report.reason;
    };
    RenderShot(shot.frames, mShot.setting(), {.render = render, .ended = ended},
               Interruption::requested());
    if (!isShot && !failure.empty()) {
        throw Error(failure);
    }
    if (isShot || verbose) {
        progress.finish(tally);
    }
    if (Status(tally) == kInterrupted) {
        streams.complain(fmt::format("interrupted with {} of {} frames done; the same command with "
                                     "--resume does the rest",
                                     tally.ended(), tally.frames()));
    }
    return Status(tally);
}

} // namespace Kerovane::Host
