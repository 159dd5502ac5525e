#pragma once

#include <cstddef>

namespace Kerovane::Host {

/**
 * Counts the errors that FFmpeg's decoders and demuxers log: much of what they conceal or skip they
 * tell of in no other way. The messages go on to where FFmpeg prints them.
 */
class LogWatch {
public:
    /// Begins to count, for the rest of the process.
    static void begin();

    /// Errors so far, on any thread.
    static std::size_t errors();
};

} // namespace Kerovane::Host
