#pragma once

#include "Adapters/Frei0r/FrameRenderer.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <future>
#include <mutex>
#include <optional>
#include <thread>

namespace Kerovane::Frei0r {

/**
 * The one thread on which the effect is set up, renders and is set down, for all instances. The
 * effect wants one frame at a time and keeps a GL context for each thread that it sees: so the
 * host's threads, however many and however short-lived, share one, and whatever GL context the host
 * has current on them is never touched.
 */
class RenderThread {
public:
    using Task = std::function<void(FrameRenderer&)>;

    RenderThread();
    RenderThread(const RenderThread&) = delete;
    RenderThread& operator=(const RenderThread&) = delete;

    /// Ends what was asked for, and sets the effect down. Not to be called on the thread itself.
    ~RenderThread();

    /// Runs `task` after what was asked for before, and waits for its end. Throws what it throws;
    /// where the effect can't be set up, the Error that says why, without running it.
    void run(const Task& task);

private:
    using Order = std::packaged_task<void()>;

    // On the thread.
    void work();
    std::optional<Order> nextOrder(); ///< nothing once the thread has to end
    FrameRenderer& renderer();        ///< throws what its set-up threw

    std::mutex mMutex;
    std::condition_variable mChanged;
    std::deque<Order> mOrders;
    bool mEnding = false;
    std::optional<FrameRenderer> mRenderer;
    std::exception_ptr mProblem; ///< where there is no renderer
    std::thread mThread;
};

} // namespace Kerovane::Frei0r
