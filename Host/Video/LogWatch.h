#pragma once

#include <cstddef>

namespace Kerovane::Host {

/**
 * Counts the errors that FFmpeg's decoders and demuxers log. Much of the damage that they conceal
 * or skip is reported in the log only. Messages are still printed by FFmpeg.
 */
class LogWatch {
public:
    /// Starts counting, for the rest of the process.
    static void begin();

    /// The number of errors so far, on all threads.
    static std::size_t errors();
};

} // namespace Kerovane::Host
