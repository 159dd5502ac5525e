#pragma once

#include "Host/Video/StreamCarrier.h"

#include <cstdint>

namespace Kerovane::Host {

/** Decodes and re-encodes sound for containers that do not hold its codec. */
class SoundConverter : public StreamCarrier {
public:
    /// Sets up `to`, a new stream of a movie whose header is not written yet. Throws Error if the
    /// sound cannot be converted.
    SoundConverter(const AVStream& from, AVStream& to, AVCodecID codec, bool globalHeader,
                   PacketSink sink);

    void carry(AVPacket& packet) override;
    void finish() override;

private:
    void openDecoder(const AVStream& from);
    void openEncoder(AVCodecID codec, bool globalHeader);
    void decode(const AVPacket* packet);
    void resample(const AVFrame* sound);
    void encodeQueued(bool all);
    void encode(const AVFrame* sound);

    AvCodecContext mDecoder;
    AvCodecContext mEncoder;
    AvResampler mResampler;
    AvSampleQueue mQueue;
    AVStream& mTo;
    PacketSink mSink;
    bool mHasBegun = false;
    std::int64_t mTime = 0; ///< time of the next sample to encode, in samples
};

} // namespace Kerovane::Host
