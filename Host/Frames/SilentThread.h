#pragma once

namespace Kerovane::Host {

/**
 * While it lives, what its thread writes on std::cout is dropped, and all others' text passes as
 * before. Effects report there, on each new GL context say, and a process's standard output may
 * well be the video that it makes. The process's descriptors stay as they are. Made and destroyed
 * on one thread; several on a thread nest.
 */
class SilentThread {
public:
    SilentThread();
    ~SilentThread();
    SilentThread(const SilentThread&) = delete;
    SilentThread& operator=(const SilentThread&) = delete;
};

} // namespace Kerovane::Host
