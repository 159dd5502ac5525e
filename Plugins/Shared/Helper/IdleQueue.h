#pragma once

#include "Plugins/Shared/Helper/Semaphore.h"

#include <deque>
#include <functional>
#include <memory>

namespace Kerovane::Tesselune {

/**
 * Tasks put off until somebody is idle. Any threads push them, and whoever drives the queue runs
 * one at each turn, oldest first. Starts no thread of its own. A task is copied under the lock, so
 * copying it must not use the queue.
 */
class IdleQueue {
public:
    IdleQueue();
    IdleQueue(const IdleQueue&) = delete;
    IdleQueue& operator=(const IdleQueue&) = delete;

    /// Tasks that still wait are not run. No other call may be in progress.
    virtual ~IdleQueue() = default;

    /// Whether a task waits. From any thread.
    bool hasTask();

    /// Puts a copy of the task at the end of the queue and returns at once. From any thread.
    void async(const std::function<void()>& task);

    /**
     * Runs the oldest task, or none if the queue is empty. From any thread, and from several at
     * once. The task runs and is destroyed without the lock, so it may use the queue; what it
     * pushes waits for the next call.
     *
     * @throws what the task throws, and std::bad_function_call for an empty one. The task has left
     *     the queue then, which remains usable. What copying the task throws, with the task still
     *     in the queue.
     */
    void updateQueue();

    /// Drops the tasks that wait, without running them. Takes no lock: no other thread may be in a
    /// call. A running task may call it.
    void clearAsyncQueue();

private:
    std::unique_ptr<Semaphore> mLock; ///< guards mQueue
    std::deque<std::function<void()>> mQueue;
};

} // namespace Kerovane::Tesselune
