#pragma once

namespace Kerovane::Host {

/**
 * Drops what its thread writes to std::cout while it exists; other threads' output passes. Effects
 * print there, for example for each new GL context, and a process may be writing video to standard
 * output. File descriptors are not redirected. Must be constructed and destroyed on the same
 * thread; may be nested.
 */
class SilentThread {
public:
    SilentThread();
    ~SilentThread();
    SilentThread(const SilentThread&) = delete;
    SilentThread& operator=(const SilentThread&) = delete;
};

} // namespace Kerovane::Host
