#include "Host/Shots/ShotRenderer.h"

#include "Host/Pictures/PictureReader.h"
#include "Host/Pictures/PictureWriter.h"
#include "Host/Text/Error.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <future>
#include <mutex>
#include <new>
#include <system_error>
#include <utility>

namespace Kerovane::Host {

namespace {

/// Lets the frames of a shot pass one at a time, in their order. Each has to pass once.
class Turnstile {
public:
    /// Waits for the frames before, then does `work`, which may throw.
    template <typename Work>
    void pass(std::size_t index, const Work& work) {
        std::unique_lock lock(mMutex);
        mMoved.wait(lock, [&] { return mNext == index; });
        ++mNext; // the lock keeps the next frame back until the work is done
        mMoved.notify_all();
        work();
    }

private:
    std::mutex mMutex;
    std::condition_variable mMoved;
    std::size_t mNext = 0;
};

/// Sets `seconds` to the time that it lived.
class Stopwatch {
public:
    explicit Stopwatch(double& seconds) : mSeconds(seconds) {}
    ~Stopwatch() { mSeconds = std::chrono::duration<double>(Clock::now() - mStart).count(); }
    Stopwatch(const Stopwatch&) = delete;
    Stopwatch& operator=(const Stopwatch&) = delete;

private:
    using Clock = std::chrono::steady_clock;

    double& mSeconds;
    Clock::time_point mStart = Clock::now();
};

/// A frame on its way.
struct FrameJob {
    const ShotFrame& frame;
    std::optional<World> input{};
    std::optional<World> output{};
    OIIO::ImageSpec origin{};
    FrameReport report{};
    bool hasEnded = false; ///< the stages that are left have nothing to do
};

/// Frees the pixels at once, as the report may have to wait for those of earlier frames.
void End(FrameJob& job, FrameEnding ending, std::string reason = "") {
    job.input.reset();
    job.output.reset();
    job.report.ending = ending;
    job.report.reason = std::move(reason);
    job.hasEnded = true;
}

void Read(FrameJob& job, const ShotSetting& setting) {
    const Stopwatch stopwatch(job.report.seconds.read);
    if (setting.resume && HoldsPictureLike(job.frame.output, job.frame.input)) {
        End(job, FrameEnding::Kept);
        return;
    }
    Picture picture = ReadPicture(job.frame.input, setting.depth);
    job.report.width = picture.world.width();
    job.report.height = picture.world.height();
    job.input = std::move(picture.world);
    job.origin = std::move(picture.origin);
}

void Render(FrameJob& job, const ShotDrawing& drawing) {
    const Stopwatch stopwatch(job.report.seconds.render);
    const World& input = *job.input;
    World& output = job.output.emplace(input.depth(), input.width(), input.height());
    job.report.nonFinitePixels =
        drawing.renderer.render({.time = drawing.rate.timeOf(job.frame.number),
                                 .timeStep = drawing.rate.timeStep(),
                                 .downsample = drawing.downsample},
                                drawing.values, ViewOf(input), ViewOf(output), drawing.with);
    job.input.reset();
}

void Write(FrameJob& job) {
    const Stopwatch stopwatch(job.report.seconds.write);
    PictureWriter(job.frame.output).write(*job.output, job.origin);
    End(job, FrameEnding::Rendered);
}

/// Runs a stage of a frame that hasn't ended. What the stage throws fails the frame; nothing leaves
/// here, as later frames would wait for this one for ever.
template <typename Stage>
void Run(FrameJob& job, const Stage& stage) noexcept {
    if (job.hasEnded) {
        return;
    }
    try {
        stage();
    } catch (const std::bad_alloc&) {
        End(job, FrameEnding::Failed, "out of memory");
    } catch (const std::exception& error) {
        End(job, FrameEnding::Failed, OneLine(error.what()));
    }
}

/// Runs `work` on as many threads as asked for, or as the system gives. Throws Error if it gives
/// none: this thread doesn't step in, as a driver that got too few of its own hangs while it draws.
template <typename Work>
std::vector<std::future<void>> StartThreads(std::size_t count, const Work& work) {
    std::vector<std::future<void>> threads;
    try {
        while (threads.size() < count) {
            threads.push_back(std::async(std::launch::async, work));
        }
    } catch (const std::system_error& error) {
        if (threads.empty()) {
            throw Error(std::string("no thread can be started: ") + error.what());
        }
    }
    return threads;
}

} // namespace

void RenderShot(const std::vector<ShotFrame>& frames, const ShotSetting& setting,
                const ShotDrawing& drawing, const FrameEnded& ended,
                const std::atomic<bool>& stop) {
    Turnstile rendering;
    Turnstile reporting;
    const auto renderFrame = [&](std::size_t index) {
        FrameJob job{.frame = frames[index]};
        Run(job, [&] { Read(job, setting); });
        rendering.pass(index, [&] { Run(job, [&] { Render(job, drawing); }); });
        Run(job, [&] { Write(job); });
        reporting.pass(index, [&] { ended(job.frame, job.report); });
    };

    // A frame that was taken goes all the way, so that none waits for one that never comes.
    std::atomic<std::size_t> next = 0;
    const auto renderFrames = [&] {
        while (!stop) {
            const std::size_t index = next++;
            if (index >= frames.size()) {
                return;
            }
            renderFrame(index);
        }
    };

    for (std::future<void>& thread :
         StartThreads(std::min(setting.framesInFlight, frames.size()), renderFrames)) {
        thread.get();
    }
}

} // namespace Kerovane::Host
