#include "Host/Shots/ShotRenderer.h"

#include "Host/Text/Error.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <future>
#include <iterator>
#include <memory>
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

/// Adds to `seconds` the time that it lived.
class Stopwatch {
public:
    explicit Stopwatch(double& seconds) : mSeconds(seconds) {}
    ~Stopwatch() { mSeconds += std::chrono::duration<double>(Clock::now() - mStart).count(); }
    Stopwatch(const Stopwatch&) = delete;
    Stopwatch& operator=(const Stopwatch&) = delete;

private:
    using Clock = std::chrono::steady_clock;

    double& mSeconds;
    Clock::time_point mStart = Clock::now();
};

/// A frame on its way.
struct FrameJob {
    std::size_t index = 0; ///< among those that began
    std::unique_ptr<SourceFrame> source{};
    std::optional<Picture> picture{}; ///< as it was read, then as it is drawn
    std::unique_ptr<PackedFrame> packed{};
    FrameReport report{};
    bool hasEnded = false; ///< the stages that are left have nothing to do
};

/// Frees the pixels at once, as the report may have to wait for those of earlier frames.
void End(FrameJob& job, FrameEnding ending, std::string reason = "") {
    job.picture.reset();
    job.report.ending = ending;
    job.report.reason = std::move(reason);
    job.hasEnded = true;
}

void Look(FrameJob& job, const FrameSink& sink) {
    const Stopwatch stopwatch(job.report.seconds.read);
    if (sink.has(job.source->shotFrame(), job.report.remarks)) {
        End(job, FrameEnding::Kept);
    }
}

/// Leaves the job as it is if the sink can't draw the frame.
void Draw(FrameJob& job, FrameSink& sink) {
    const Stopwatch stopwatch(job.report.seconds.render);
    job.packed = sink.draw(*job.source);
    if (job.packed != nullptr) {
        job.report.width = job.packed->width();
        job.report.height = job.packed->height();
        End(job, FrameEnding::Rendered);
    }
}

void Read(FrameJob& job, const ShotSetting& setting) {
    const Stopwatch stopwatch(job.report.seconds.read);
    const World& world = job.picture.emplace(job.source->read(setting.reading)).first().world;
    job.report.width = world.width();
    job.report.height = world.height();
}

/// Draws a layer of the frame in the place of the one that was read.
void Render(FrameJob& job, World& world, const ShotDrawing& drawing) {
    World output(world.depth(), world.width(), world.height());
    job.report.nonFinitePixels +=
        drawing.renderer.render({.time = drawing.rate.timeOf(job.source->shotFrame().number),
                                 .timeStep = drawing.rate.timeStep(),
                                 .downsample = drawing.downsample},
                                drawing.values, ViewOf(world), ViewOf(output), drawing.with);
    world = std::move(output);
}

void Render(FrameJob& job, const ShotDrawing& drawing) {
    const Stopwatch stopwatch(job.report.seconds.render);
    for (PicturePart& part : job.picture->parts) {
        for (PictureLayer& layer : part.layers) {
            Render(job, layer.world, drawing);
        }
    }
}

void Pack(FrameJob& job, const ShotSetting& setting, FrameSink& sink) {
    const Stopwatch stopwatch(job.report.seconds.write);
    if (setting.conversion) {
        setting.conversion->apply(*job.picture);
    }
    job.packed = sink.pack(job.source->shotFrame(), *job.picture);
    std::ranges::move(job.picture->losses, std::back_inserter(job.report.remarks));
    End(job, FrameEnding::Rendered);
}

void Put(FrameJob& job, FrameSink& sink) {
    const Stopwatch stopwatch(job.report.seconds.write);
    sink.put(*job.source, std::move(job.packed));
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

/// The way of frames from a source to a sink.
class FrameRun {
public:
    FrameRun(FrameSource& source, FrameSink& sink, const ShotSetting& setting,
             const ShotDrawing& drawing, const FrameEnded& ended, const std::atomic<bool>& stop)
        : mSource(source),
          mSink(sink),
          mSetting(setting),
          mDrawing(drawing),
          mEnded(ended),
          mStop(stop) {}

    /// On each of several threads. A frame that was taken goes all the way, so that none waits for
    /// one that never comes.
    void renderFrames() {
        while (std::optional<FrameJob> job = begin()) {
            renderFrame(*job);
        }
    }

    /// Throws what kept the source or the sink from going on.
    void check() const {
        if (mFailure) {
            std::rethrow_exception(mFailure);
        }
    }

private:
    std::optional<FrameJob> begin() {
        const std::lock_guard lock(mTaking);
        if (mStop || mHasFailed) {
            return std::nullopt;
        }
        FrameJob job{.index = mNext};
        attempt([&] {
            const Stopwatch stopwatch(job.report.seconds.read);
            job.source = mSource.next();
        });
        if (job.source == nullptr) {
            return std::nullopt;
        }
        ++mNext;
        return job;
    }

    void renderFrame(FrameJob& job) {
        Run(job, [&] { Look(job, mSink); });
        Run(job, [&] { Draw(job, mSink); });
        Run(job, [&] { Read(job, mSetting); });
        mRendering.pass(job.index, [&] { Run(job, [&] { Render(job, mDrawing); }); });
        Run(job, [&] { Pack(job, mSetting, mSink); });
        mPutting.pass(job.index, [&] { attempt([&] { Put(job, mSink); }); });
        mReporting.pass(job.index, [&] {
            if (!mHasFailed) {
                mEnded(job.source->shotFrame(), job.report);
            }
        });
    }

    template <typename Action>
    void attempt(const Action& action) noexcept {
        if (mHasFailed) {
            return;
        }
        try {
            action();
        } catch (...) {
            const std::lock_guard lock(mFailing);
            mFailure = mHasFailed ? mFailure : std::current_exception();
            mHasFailed = true;
        }
    }

    FrameSource& mSource;
    FrameSink& mSink;
    const ShotSetting& mSetting;
    const ShotDrawing& mDrawing;
    const FrameEnded& mEnded;
    const std::atomic<bool>& mStop;
    std::mutex mTaking;
    std::size_t mNext = 0;
    Turnstile mRendering;
    Turnstile mPutting;
    Turnstile mReporting;
    std::mutex mFailing;
    std::atomic<bool> mHasFailed = false;
    std::exception_ptr mFailure;
};

} // namespace

void RenderFrames(FrameSource& source, FrameSink& sink, const ShotSetting& setting,
                  const ShotDrawing& drawing, const FrameEnded& ended,
                  const std::atomic<bool>& stop) {
    FrameRun run(source, sink, setting, drawing, ended, stop);
    for (std::future<void>& thread :
         StartThreads(setting.framesInFlight, [&run] { run.renderFrames(); })) {
        thread.get();
    }
    run.check();
}

void RenderShot(const std::vector<ShotFrame>& frames, const ShotSetting& setting,
                const ShotDrawing& drawing, const FrameEnded& ended,
                const std::atomic<bool>& stop) {
    PictureSource source(frames);
    PictureSink sink(setting.pictures);
    ShotSetting bounded = setting;
    bounded.framesInFlight = std::min(setting.framesInFlight, frames.size());
    RenderFrames(source, sink, bounded, drawing, ended, stop);
}

} // namespace Kerovane::Host
