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

/// Lets frames pass one at a time, in ascending order of their index. Every frame must pass once,
/// or the later ones wait forever.
class Turnstile {
public:
    /// Waits for the earlier frames, then runs `work`, which may throw.
    template <typename Work>
    void pass(std::size_t index, const Work& work) {
        std::unique_lock lock(mMutex);
        mMoved.wait(lock, [&] { return mNext == index; });
        ++mNext; // the lock keeps the next frame waiting until the work is done
        mMoved.notify_all();
        work();
    }

private:
    std::mutex mMutex;
    std::condition_variable mMoved;
    std::size_t mNext = 0;
};

/// Adds its own lifetime to `seconds`.
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

/// A frame on its way through the stages.
struct FrameJob {
    std::size_t index = 0; ///< counts the frames in the order in which they began
    std::unique_ptr<SourceFrame> source{};
    std::optional<Picture> picture{}; ///< first as read, then as rendered
    std::unique_ptr<PackedFrame> packed{};
    FrameReport report{};
    bool hasEnded = false; ///< whether the frame skips the remaining stages
};

/// Ends the frame. Frees its pixels at once, because its report may have to wait for earlier
/// frames.
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

/// Lets the sink draw the frame. Leaves it to the later stages if the sink cannot draw frames.
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

/// Renders `world`, a layer as it was read, and replaces it by the result.
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

/// Runs a stage unless the frame has ended. An exception fails this frame but does not propagate,
/// because later frames would then wait forever for this one.
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

/// Runs `work` on `count` threads, or on as many as the system can start. Throws Error if it can
/// start none. The calling thread does not step in: a GL driver that cannot start its own threads
/// hangs while drawing.
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

/// The rendering of a source's frames into a sink.
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

    /// Renders frames until none is left. Run by several threads. A frame that began passes every
    /// turnstile, even if it failed, because later frames wait for it.
    void renderFrames() {
        while (std::optional<FrameJob> job = begin()) {
            renderFrame(*job);
        }
    }

    /// Rethrows the exception that stopped the source or the sink.
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
