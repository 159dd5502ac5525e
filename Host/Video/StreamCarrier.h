#pragma once

#include "Host/Video/LibAv.h"

#include <functional>

namespace Kerovane::Host {

/// Takes a packet of a stream of the movie that is written, in that stream's unit of time.
using PacketSink = std::function<void(AVPacket&)>;

/**
 * Brings the packets of one stream, such as sound, from a movie to another. Their times count from
 * the new movie's start, in the old stream's unit.
 */
class StreamCarrier {
public:
    StreamCarrier() = default;
    virtual ~StreamCarrier() = default;
    StreamCarrier(const StreamCarrier&) = delete;
    StreamCarrier& operator=(const StreamCarrier&) = delete;

    virtual void carry(AVPacket& packet) = 0;

    /// After the last packet.
    virtual void finish() {}
};

} // namespace Kerovane::Host
