#pragma once

namespace Kerovane::Host {

/**
 * While an object exists, drops what its thread writes to std::cout. Other threads' output passes.
 * Effects print there, for example for each new GL context, and a process may be writing video to
 * standard output. File descriptors are not redirected. An object must be constructed and destroyed
 * on the same thread. Objects may be nested.
 */
class SilentThread {
public:
    SilentThread();
    ~SilentThread();
    SilentThread(const SilentThread&) = delete;
    SilentThread& operator=(const SilentThread&) = delete;
};

} // namespace Kerovane::Host
