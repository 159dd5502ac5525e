#pragma once

#include "Host/Frames/EffectRenderer.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <future>
#include <mutex>
#include <optional>
#include <thread>

namespace Kerovane::Host {

/// What happens to text that the effect prints on standard output.
enum class EffectOutput { Dropped, Shown };

/**
 * The one thread on which an effect is set up, renders and is shut down. An effect renders one
 * frame at a time and keeps a GL context for each thread it is called on, so all threads that
 * request frames share this one. Their own current GL contexts are never touched. The thread blocks
 * signals, so that other threads handle them.
 */
class RenderThread {
public:
    using Task = std::function<void(EffectRenderer&)>;

    /// Starts the thread. A module can be set up only once at a time in a process: if another
    /// RenderThread exists, the new thread waits for its end before setting the effect up.
    RenderThread(const EffectModules& modules, EffectOutput output);
    RenderThread(const RenderThread&) = delete;
    RenderThread& operator=(const RenderThread&) = delete;

    /// Finishes the queued tasks and shuts the effect down. Must not be called on the thread
    /// itself.
    ~RenderThread();

    /// Runs `task` on the thread after all earlier tasks, and waits for its end. Rethrows what
    /// `task` throws, or what the effect's set-up threw.
    void run(const Task& task);

private:
    /// A queued task, with the future that run() waits for.
    using Order = std::packaged_task<void()>;

    // Called on the thread.
    void work(const EffectModules& modules, EffectOutput output);
    std::optional<Order> nextOrder(); ///< waits for an order; nothing if the thread has to end
    EffectRenderer& renderer();       ///< throws what the effect's set-up threw

    std::mutex mMutex;
    std::condition_variable mChanged;
    std::deque<Order> mOrders;
    bool mEnding = false;
    std::optional<EffectRenderer> mRenderer;
    std::exception_ptr mProblem; ///< what the effect's set-up threw, if it failed
    std::thread mThread;
};

} // namespace Kerovane::Host
