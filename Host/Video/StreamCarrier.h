#pragma once

#include "Host/Video/LibAv.h"

#include <functional>

namespace Kerovane::Host {

/// Writes a packet of a target stream, whose times are in that stream's time base.
using PacketSink = std::function<void(AVPacket&)>;

/**
 * Carries the packets of one stream, such as sound, to another movie. Their times count from the
 * new movie's start, in the source stream's time base.
 */
class StreamCarrier {
public:
    StreamCarrier() = default;
    virtual ~StreamCarrier() = default;
    StreamCarrier(const StreamCarrier&) = delete;
    StreamCarrier& operator=(const StreamCarrier&) = delete;

    virtual void carry(AVPacket& packet) = 0;

    /// Called after the last packet.
    virtual void finish() {}
};

} // namespace Kerovane::Host
