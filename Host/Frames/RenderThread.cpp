#include "Host/Frames/RenderThread.h"

#include "Host/Frames/SilentThread.h"

#include <csignal>
#include <utility>

namespace Kerovane::Host {

namespace {

std::mutex mEffectInUse;

/// While an object exists, blocks all signals on the calling thread. Threads started meanwhile
/// inherit the mask, so signal handlers run on the application's own threads only.
class BlockedSignals {
public:
    BlockedSignals() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &mBefore);
    }
    ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &mBefore, nullptr); }
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;

private:
    sigset_t mBefore{};
};

} // namespace

RenderThread::RenderThread(const EffectModules& modules, EffectOutput output) {
    const BlockedSignals blocked;
    mThread = std::thread([=, this] { work(modules, output); });
}

RenderThread::~RenderThread() {
    {
        const std::lock_guard lock(mMutex);
        mEnding = true;
    }
    mChanged.notify_one();
    mThread.join();
}

void RenderThread::run(const Task& task) {
    Order order([&task, this] { task(renderer()); });
    std::future<void> done = order.get_future();
    {
        const std::lock_guard lock(mMutex);
        mOrders.push_back(std::move(order));
    }
    mChanged.notify_one();
    done.get();
}

void RenderThread::work(const EffectModules& modules, EffectOutput output) {
    const std::lock_guard inUse(mEffectInUse);
    std::optional<SilentThread> silent;
    if (output == EffectOutput::Dropped) {
        silent.emplace();
    }
    try {
        mRenderer.emplace(modules);
    } catch (...) {
        mProblem = std::current_exception();
    }
    while (std::optional<Order> order = nextOrder()) {
        (*order)();
    }
    mRenderer.reset();
}

std::optional<RenderThread::Order> RenderThread::nextOrder() {
    std::unique_lock lock(mMutex);
    mChanged.wait(lock, [this] { return mEnding || !mOrders.empty(); });
    if (mOrders.empty()) {
        return std::nullopt;
    }
    Order order = std::move(mOrders.front());
    mOrders.pop_front();
    return order;
}

EffectRenderer& RenderThread::renderer() {
    if (mProblem != nullptr) {
        std::rethrow_exception(mProblem);
    }
    return *mRenderer;
}

} // namespace Kerovane::Host
