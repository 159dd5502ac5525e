#pragma once

#include "Plugins/Shared/Helper/Semaphore.h"

#include <deque>
#include <functional>
#include <memory>

namespace Kerovane::Tesselune {

/**
 * A queue of tasks to run when the host is idle. Any thread may push tasks; each call of
 * updateQueue runs one, oldest first. The queue starts no thread of its own. A task is copied under
 * the lock, so copying it must not use the queue.
 */
class IdleQueue {
public:
    IdleQueue();
    IdleQueue(const IdleQueue&) = delete;
    IdleQueue& operator=(const IdleQueue&) = delete;

    /// Drops waiting tasks without running them. No other call may be in progress.
    virtual ~IdleQueue() = default;

    /// Returns whether a task waits. Thread-safe.
    bool hasTask();

    /// Appends a copy of the task and returns at once. Thread-safe.
    void async(const std::function<void()>& task);

    /**
     * Runs the oldest task; does nothing if the queue is empty. Thread-safe. The task runs and is
     * destroyed without the lock, so it may use the queue. Tasks that it pushes wait for the next
     * call.
     *
     * @throws what the task throws, or std::bad_function_call if the task is empty; the task has
     * then left the queue, which remains usable. Throws what copying the task throws; the task then
     * stays in the queue.
     */
    void updateQueue();

    /// Drops the waiting tasks without running them. Takes no lock: no other thread may be in a
    /// call. A running task may call it.
    void clearAsyncQueue();

private:
    std::unique_ptr<Semaphore> mLock; ///< guards mQueue
    std::deque<std::function<void()>> mQueue;
};

} // namespace Kerovane::Tesselune
