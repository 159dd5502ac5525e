#pragma once

#include "Platform/Semaphore/KernelSemaphore.h"

namespace Kerovane::Tesselune {

/** A counting semaphore that wakes the most recent waiter first. */
class Semaphore {
public:
    explicit Semaphore(unsigned int count) : mSemaphore(count) {}
    Semaphore(const Semaphore&) = delete;
    Semaphore& operator=(const Semaphore&) = delete;

    /// No thread may be waiting.
    virtual ~Semaphore() = default;

    /// Blocks until the count is above 0, then decrements it. Has no time limit.
    void wait() { mSemaphore.wait(); }

    /// Wakes one waiting thread, or increments the count if none waits.
    void signal() { mSemaphore.signal(); }

    /// Calls signal() `count` times.
    void signal(unsigned int count);

    /// Wakes all waiting threads and leaves the count unchanged.
    void signalAll() { mSemaphore.signalAll(); }

private:
    Platform::KernelSemaphore mSemaphore;
};

inline void Semaphore::signal(unsigned int count) {
    for (unsigned int i = 0; i < count; ++i) {
        signal();
    }
}

} // namespace Kerovane::Tesselune
