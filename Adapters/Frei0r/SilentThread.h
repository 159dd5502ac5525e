#pragma once

namespace Kerovane::Frei0r {

/**
 * While it lives, what its thread writes on std::cout is dropped, and all others' text passes as
 * before. The effect reports each new GL context there, and a host's standard output may well be
 * the video that it makes. The process's descriptors stay as they are. One at a time.
 */
class SilentThread {
public:
    SilentThread();
    ~SilentThread();
    SilentThread(const SilentThread&) = delete;
    SilentThread& operator=(const SilentThread&) = delete;
};

} // namespace Kerovane::Frei0r
