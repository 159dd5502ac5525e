#pragma once

#include "Host/Video/StreamCarrier.h"

namespace Kerovane::Host {

/// Returns whether a codec's subtitles are text. Text subtitles can be converted between codecs.
bool IsTextSubtitle(AVCodecID codec);

/** Converts text subtitles for containers that do not hold their codec. */
class SubtitleConverter : public StreamCarrier {
public:
    /// Sets up `to`, a new stream of a movie whose header is not written yet. Throws Error if the
    /// subtitles cannot be converted.
    SubtitleConverter(const AVStream& from, AVStream& to, AVCodecID codec, PacketSink sink);

    void carry(AVPacket& packet) override;

private:
    AvCodecContext mDecoder;
    AvCodecContext mEncoder;
    AVStream& mTo;
    PacketSink mSink;
};

} // namespace Kerovane::Host
