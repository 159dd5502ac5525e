#include "Host/Shots/Pipeline.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace Kerovane::Host {

namespace {

class Pipeline {
public:
    Pipeline(std::size_t count, PipelineLimits limits, const PipelineStages& stages,
             const std::atomic<bool>& stop)
        : mCount(count), mLimits(limits), mStages(stages), mStop(stop) {}

    void run() {
        std::vector<std::jthread> workers;
        try {
            while (workers.size() < mLimits.threads) {
                workers.emplace_back([this] { readAndWrite(); });
            }
        } catch (const std::system_error&) {
            if (workers.empty()) {
                throw;
            }
        }
        render();
    }

private:
    using Lock = std::unique_lock<std::mutex>;

    /// Runs a stage while the others go on.
    template <typename Stage>
    static auto outside(Lock& lock, Stage stage) {
        struct Relock {
            Lock& lock;
            ~Relock() { lock.lock(); }
        };
        lock.unlock();
        const Relock relock{lock};
        return stage();
    }

    /// What is nearest to its end goes first, so that memory comes free.
    void readAndWrite() {
        Lock lock(mMutex);
        for (;;) {
            mChanged.wait(lock, [this] { return !mToWrite.empty() || mayBegin() || isDone(); });
            if (!mToWrite.empty()) {
                const std::size_t item = take(mToWrite);
                outside(lock, [&] { mStages.write(item); });
                --mInFlight;
            } else if (mayBegin()) {
                const std::size_t item = mNext++;
                ++mInFlight;
                const bool goesOn = outside(lock, [&] { return mStages.read(item); });
                passOn(item, goesOn, mToRender);
            } else {
                return;
            }
            mChanged.notify_all();
        }
    }

    void render() {
        Lock lock(mMutex);
        for (;;) {
            mChanged.wait(lock, [this] { return !mToRender.empty() || isDone(); });
            if (mToRender.empty()) {
                return;
            }
            const std::size_t item = take(mToRender);
            const bool goesOn = outside(lock, [&] { return mStages.render(item); });
            passOn(item, goesOn, mToWrite);
            mChanged.notify_all();
        }
    }

    bool mayBegin() const { return mNext < mCount && !mStop && mInFlight < mLimits.itemsInFlight; }

    bool isDone() const { return mInFlight == 0 && (mNext == mCount || mStop); }

    void passOn(std::size_t item, bool goesOn, std::deque<std::size_t>& queue) {
        if (goesOn) {
            queue.push_back(item);
        } else {
            --mInFlight;
        }
    }

    static std::size_t take(std::deque<std::size_t>& queue) {
        const std::size_t item = queue.front();
        queue.pop_front();
        return item;
    }

    std::size_t mCount;
    PipelineLimits mLimits;
    const PipelineStages& mStages;
    const std::atomic<bool>& mStop;

    std::mutex mMutex;
    std::condition_variable mChanged;
    std::size_t mNext = 0; ///< the first that hasn't begun
    std::size_t mInFlight = 0;
    std::deque<std::size_t> mToRender;
    std::deque<std::size_t> mToWrite;
};

} // namespace

void RunPipeline(std::size_t count, PipelineLimits limits, const PipelineStages& stages,
                 const std::atomic<bool>& stop) {
    Pipeline(count, limits, stages, stop).run();
}

} // namespace Kerovane::Host
