#pragma once

#include <algorithm>
#include <chrono>

namespace Kerovane::Host {

/** A token bucket: allows a number of events per second, and as many at once after a pause. */
class RateLimit {
public:
    using Clock = std::chrono::steady_clock;

    explicit RateLimit(double perSecond) : mPerSecond(perSecond), mLeft(perSecond) {}

    /// Returns whether another event is allowed at `now`. `now` must not go back from call to call.
    bool pass(Clock::time_point now) {
        const double seconds = std::chrono::duration<double>(now - mLast).count();
        mLeft = std::min(mPerSecond, mLeft + seconds * mPerSecond);
        mLast = now;
        if (mLeft < 1) {
            return false;
        }
        mLeft -= 1;
        return true;
    }

private:
    double mPerSecond;
    double mLeft;
    Clock::time_point mLast = Clock::now();
};

} // namespace Kerovane::Host
