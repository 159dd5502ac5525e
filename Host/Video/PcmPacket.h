#pragma once

#include "Host/Video/LibAv.h"

#include <algorithm>
#include <cstdint>

namespace Kerovane::Host {

/// Returns the bytes of one PCM sample of all channels, at which packets can be cut. Returns 0 if
/// the stream is not PCM sound.
inline int PcmBlockSize(const AVCodecParameters& sound) {
    constexpr int kByte = 8;
    const int bits = av_get_exact_bits_per_sample(sound.codec_id);
    const bool isPcm = sound.codec_type == AVMEDIA_TYPE_AUDIO && sound.sample_rate > 0;
    return isPcm && bits % kByte == 0 ? bits / kByte * sound.ch_layout.nb_channels : 0;
}

/// Cuts a PCM packet to the time from `from` to `to`, in `unit`.
inline void CutPcm(AVPacket& packet, const AVCodecParameters& sound, AVRational unit,
                   std::int64_t from, std::int64_t to) {
    const int block = PcmBlockSize(sound);
    const AVRational sample{1, sound.sample_rate};
    const std::int64_t samples = packet.size / block;
    const auto samplesUntil = [&](std::int64_t time) {
        return std::clamp<std::int64_t>(av_rescale_q(time - packet.pts, unit, sample), 0, samples);
    };
    const std::int64_t first = samplesUntil(from);
    const std::int64_t last = to < packet.pts + packet.duration ? samplesUntil(to) : samples;
    packet.data += first * block;
    packet.size = static_cast<int>(std::max<std::int64_t>(last - first, 0)) * block;
    packet.pts += av_rescale_q(first, sample, unit);
    packet.dts = packet.pts;
    packet.duration = av_rescale_q(last - first, sample, unit);
}

} // namespace Kerovane::Host
