#pragma once

#include "Platform/Semaphore/KernelSemaphore.h"

namespace Kerovane::Tesselune {

/** A counting semaphore. The thread that began to wait last wakes first. */
class Semaphore {
public:
    explicit Semaphore(unsigned int count) : mSemaphore(count) {}
    Semaphore(const Semaphore&) = delete;
    Semaphore& operator=(const Semaphore&) = delete;

    /// No thread may be waiting.
    virtual ~Semaphore() = default;

    /// Blocks until the count is above 0, and takes one. Has no time limit.
    void wait() { mSemaphore.wait(); }

    /// Wakes one thread that waits, or adds one to the count if there is none.
    void signal() { mSemaphore.signal(); }

    /// The same `count` times over; 0 signals nothing.
    void signal(unsigned int count);

    /// Wakes all threads that wait and leaves the count as it is.
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
