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

/// What becomes of that which an effect prints on standard output.
enum class EffectOutput { Dropped, Shown };

/**
 * The one thread on which an effect is set up, renders and is set down. An effect wants one frame
 * at a time and keeps a GL context for each thread that it sees: so the threads that ask for
 * frames, however many and however short-lived, share one, and whatever GL context they have
 * current is never touched. Signals are taken by other threads.
 */
class RenderThread {
public:
    using Task = std::function<void(EffectRenderer&)>;

    /// A module of the effect knows one set-up in a process: if another thread has one, this one
    /// waits for its end before it sets the effect up.
    RenderThread(const EffectModules& modules, EffectOutput output);
    RenderThread(const RenderThread&) = delete;
    RenderThread& operator=(const RenderThread&) = delete;

    /// Ends what was asked for, and sets the effect down. Not to be called on the thread itself.
    ~RenderThread();

    /// Runs `task` after what was asked for before, and waits for its end. Throws what it throws,
    /// or if the effect can't be set up, the Error that says why.
    void run(const Task& task);

private:
    using Order = std::packaged_task<void()>;

    // On the thread.
    void work(const EffectModules& modules, EffectOutput output);
    std::optional<Order> nextOrder(); ///< nothing once the thread has to end
    EffectRenderer& renderer();       ///< throws what its set-up threw

    std::mutex mMutex;
    std::condition_variable mChanged;
    std::deque<Order> mOrders;
    bool mEnding = false;
    std::optional<EffectRenderer> mRenderer;
    std::exception_ptr mProblem; ///< if there is no renderer
    std::thread mThread;
};

} // namespace Kerovane::Host
