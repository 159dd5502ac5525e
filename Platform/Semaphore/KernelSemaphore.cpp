#include "Platform/Semaphore/KernelSemaphore.h"

#include <condition_variable>

namespace Kerovane::Platform {

/// Stands for a thread inside wait(), on whose stack it lies. Each waiter has its own condition
/// variable, so that a thread that calls wait() after a signal cannot take it.
struct KernelSemaphore::Waiter {
    Waiter* previous;
    bool isWoken = false;
    std::condition_variable wake = {};
};

void KernelSemaphore::wait() {
    std::unique_lock lock(mMutex);
    if (mCount > 0) {
        --mCount;
        return;
    }
    Waiter self{mLastWaiter};
    mLastWaiter = &self;
    self.wake.wait(lock, [&self] { return self.isWoken; });
}

void KernelSemaphore::signal() {
    const std::lock_guard lock(mMutex);
    if (mLastWaiter == nullptr) {
        ++mCount;
    } else {
        wakeLast();
    }
}

void KernelSemaphore::signalAll() {
    const std::lock_guard lock(mMutex);
    while (mLastWaiter != nullptr) {
        wakeLast();
    }
}

void KernelSemaphore::wakeLast() {
    Waiter& waiter = *mLastWaiter;
    mLastWaiter = waiter.previous;
    waiter.isWoken = true;
    waiter.wake.notify_one();
}

} // namespace Kerovane::Platform
