#pragma once

#include "Host/Video/StreamCarrier.h"

namespace Kerovane::Host {

/// Whether a codec's subtitles are text, so that one such codec's can be made of another's.
bool IsTextSubtitle(AVCodecID codec);

/** Writes subtitles of text anew, for containers that don't hold them as they are. */
class SubtitleConverter : public StreamCarrier {
public:
    /// Describes the subtitles in `to`, a new stream of a movie that hasn't begun. Throws Error if
    /// they can't be converted.
    SubtitleConverter(const AVStream& from, AVStream& to, AVCodecID codec, PacketSink sink);

    void carry(AVPacket& packet) override;

private:
    AvCodecContext mDecoder;
    AvCodecContext mEncoder;
    AVStream& mTo;
    PacketSink mSink;
};

} // namespace Kerovane::Host
