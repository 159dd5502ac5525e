#include "Host/Shots/ShotRenderer.h"

#include "Host/Pictures/PictureReader.h"
#include "Host/Pictures/PictureWriter.h"
#include "Host/Text/Error.h"

#include <chrono>
#include <exception>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

namespace Kerovane::Host {

namespace {

/// A frame on its way. One thread has it at a time.
struct FrameJob {
    std::optional<World> input;
    std::optional<World> output;
    OIIO::ImageSpec origin;
    FrameReport report;
};

class ShotRenderer {
public:
    ShotRenderer(const std::vector<ShotFrame>& frames, const ShotSetting& setting,
                 const ShotCallbacks& callbacks)
        : mFrames(frames), mSetting(setting), mCallbacks(callbacks), mJobs(frames.size()) {}

    PipelineStages stages() {
        return {.read = [this](std::size_t i) { return run(i, &StageSeconds::read, &Self::read); },
                .render =
                    [this](std::size_t i) { return run(i, &StageSeconds::render, &Self::render); },
                .write = [this](std::size_t i) { run(i, &StageSeconds::write, &Self::write); }};
    }

private:
    using Self = ShotRenderer;

    /// Runs one stage of a frame, and ends the frame unless the stage sends it on.
    bool run(std::size_t index, double StageSeconds::*seconds,
             bool (Self::*stage)(const ShotFrame&, FrameJob&)) {
        const ShotFrame& frame = mFrames[index];
        std::optional<FrameJob>& job = mJobs[index];
        if (!job) {
            job.emplace();
        }
        const auto start = std::chrono::steady_clock::now();
        const bool goesOn = tryTo([&] { return (this->*stage)(frame, *job); }, job->report);
        job->report.seconds.*seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (!goesOn) {
            const FrameReport report = std::move(job->report);
            job.reset();
            const std::lock_guard lock(mReporting);
            mCallbacks.ended(frame, report);
        }
        return goesOn;
    }

    template <typename Stage>
    static bool tryTo(Stage stage, FrameReport& report) {
        try {
            return stage();
        } catch (const std::bad_alloc&) {
            report.reason = "out of memory";
        } catch (const std::exception& error) {
            report.reason = OneLine(error.what());
        }
        report.ending = FrameEnding::Failed;
        return false;
    }

    bool read(const ShotFrame& frame, FrameJob& job) {
        if (mSetting.resume && HoldsPictureLike(frame.output, frame.input)) {
            job.report.ending = FrameEnding::Kept;
            return false;
        }
        Picture picture = ReadPicture(frame.input, mSetting.depth);
        job.report.width = picture.world.width();
        job.report.height = picture.world.height();
        job.input = std::move(picture.world);
        job.origin = std::move(picture.origin);
        return true;
    }

    bool render(const ShotFrame& frame, FrameJob& job) {
        World& input = *job.input;
        World& output = job.output.emplace(input.depth(), input.width(), input.height());
        mCallbacks.render(frame, input, output);
        job.input.reset();
        return true;
    }

    bool write(const ShotFrame& frame, FrameJob& job) {
        PictureWriter(frame.output).write(*job.output, job.origin);
        job.report.ending = FrameEnding::Rendered;
        return false;
    }

    const std::vector<ShotFrame>& mFrames;
    const ShotSetting& mSetting;
    const ShotCallbacks& mCallbacks;
    std::vector<std::optional<FrameJob>> mJobs; ///< there while the frame is in flight
    std::mutex mReporting;
};

} // namespace

void RenderShot(const std::vector<ShotFrame>& frames, const ShotSetting& setting,
                const ShotCallbacks& callbacks, const std::atomic<bool>& stop) {
    ShotRenderer renderer(frames, setting, callbacks);
    RunPipeline(frames.size(), setting.limits, renderer.stages(), stop);
}

} // namespace Kerovane::Host
