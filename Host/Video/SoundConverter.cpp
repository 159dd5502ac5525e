#include "Host/Video/SoundConverter.h"

#include <algorithm>

namespace Kerovane::Host {

namespace {

constexpr const char* kFailure = "the sound can't be converted";

int RateFor(const AVCodec& codec, int wanted) {
    constexpr int kCommon = 48000;
    if (codec.supported_samplerates == nullptr) {
        return wanted;
    }
    for (const int* rate = codec.supported_samplerates; *rate != 0; ++rate) {
        if (*rate == wanted) {
            return wanted;
        }
    }
    return kCommon;
}

} // namespace

SoundConverter::SoundConverter(const AVStream& from, AVStream& to, AVCodecID codec,
                               bool globalHeader, PacketSink sink)
    : mTo(to), mSink(std::move(sink)) {
    openDecoder(from);
    openEncoder(codec, globalHeader);
    SwrContext* resampler = nullptr;
    CheckAv(swr_alloc_set_opts2(&resampler, &mEncoder->ch_layout, mEncoder->sample_fmt,
                                mEncoder->sample_rate, &mDecoder->ch_layout, mDecoder->sample_fmt,
                                mDecoder->sample_rate, 0, nullptr),
            kFailure);
    mResampler.reset(resampler);
    CheckAv(swr_init(resampler), kFailure);
    mQueue.reset(
        Allocated(av_audio_fifo_alloc(mEncoder->sample_fmt, mEncoder->ch_layout.nb_channels, 1)));
    CheckAv(avcodec_parameters_from_context(to.codecpar, mEncoder.get()), kFailure);
    to.time_base = mEncoder->time_base;
}

void SoundConverter::openDecoder(const AVStream& from) {
    const AVCodec* codec = avcodec_find_decoder(from.codecpar->codec_id);
    if (codec == nullptr) {
        throw Error("there is no decoder for the sound");
    }
    mDecoder.reset(Allocated(avcodec_alloc_context3(codec)));
    CheckAv(avcodec_parameters_to_context(mDecoder.get(), from.codecpar), kFailure);
    mDecoder->pkt_timebase = from.time_base;
    CheckAv(avcodec_open2(mDecoder.get(), codec, nullptr), kFailure);
    if (mDecoder->ch_layout.order == AV_CHANNEL_ORDER_UNSPEC) {
        av_channel_layout_default(&mDecoder->ch_layout, mDecoder->ch_layout.nb_channels);
    }
}

void SoundConverter::openEncoder(AVCodecID id, bool globalHeader) {
    constexpr std::int64_t kBitsPerChannel = 64000; // bits per second for each sound channel
    const AVCodec* codec = avcodec_find_encoder(id);
    if (codec == nullptr) {
        throw Error("there is no encoder for the sound");
    }
    mEncoder.reset(Allocated(avcodec_alloc_context3(codec)));
    CheckAv(av_channel_layout_copy(&mEncoder->ch_layout, &mDecoder->ch_layout), kFailure);
    mEncoder->sample_rate = RateFor(*codec, mDecoder->sample_rate);
    mEncoder->sample_fmt =
        codec->sample_fmts != nullptr ? codec->sample_fmts[0] : mDecoder->sample_fmt;
    mEncoder->time_base = {1, mEncoder->sample_rate};
    mEncoder->bit_rate = kBitsPerChannel * mEncoder->ch_layout.nb_channels;
    mEncoder->flags |= globalHeader ? AV_CODEC_FLAG_GLOBAL_HEADER : 0;
    CheckAv(avcodec_open2(mEncoder.get(), codec, nullptr), kFailure);
}

void SoundConverter::carry(AVPacket& packet) {
    decode(&packet);
}

void SoundConverter::finish() {
    decode(nullptr);
    resample(nullptr);
    encodeQueued(true);
    encode(nullptr);
}

/// Decodes a packet and encodes its sound. A null packet makes the decoder return the rest. Sound
/// that cannot be decoded is dropped.
void SoundConverter::decode(const AVPacket* packet) {
    avcodec_send_packet(mDecoder.get(), packet);
    const AvFrame sound = NewFrame();
    while (avcodec_receive_frame(mDecoder.get(), sound.get()) >= 0) {
        if (!std::exchange(mHasBegun, true) && sound->best_effort_timestamp != AV_NOPTS_VALUE) {
            mTime = av_rescale_q(sound->best_effort_timestamp, mDecoder->pkt_timebase,
                                 mEncoder->time_base);
        }
        resample(sound.get());
        encodeQueued(false);
    }
}

void SoundConverter::resample(const AVFrame* sound) {
    const int samples = sound != nullptr ? sound->nb_samples : 0;
    const int room = swr_get_out_samples(mResampler.get(), samples);
    if (room <= 0) {
        return;
    }
    const AvFrame out = NewFrame();
    out->nb_samples = room;
    out->format = mEncoder->sample_fmt;
    CheckAv(av_channel_layout_copy(&out->ch_layout, &mEncoder->ch_layout), kFailure);
    CheckAv(av_frame_get_buffer(out.get(), 0), kFailure);
    const auto** in =
        sound != nullptr ? const_cast<const std::uint8_t**>(sound->extended_data) : nullptr;
    const int made =
        CheckAv(swr_convert(mResampler.get(), out->extended_data, room, in, samples), kFailure);
    CheckAv(av_audio_fifo_write(mQueue.get(), reinterpret_cast<void**>(out->extended_data), made),
            kFailure);
}

void SoundConverter::encodeQueued(bool all) {
    while (true) {
        const int queued = av_audio_fifo_size(mQueue.get());
        const int wanted = mEncoder->frame_size > 0 ? mEncoder->frame_size : queued;
        if (queued == 0 || (queued < wanted && !all)) {
            return;
        }
        const AvFrame sound = NewFrame();
        sound->nb_samples = std::min(queued, wanted);
        sound->format = mEncoder->sample_fmt;
        sound->sample_rate = mEncoder->sample_rate;
        sound->pts = mTime;
        CheckAv(av_channel_layout_copy(&sound->ch_layout, &mEncoder->ch_layout), kFailure);
        CheckAv(av_frame_get_buffer(sound.get(), 0), kFailure);
        CheckAv(av_audio_fifo_read(mQueue.get(), reinterpret_cast<void**>(sound->extended_data),
                                   sound->nb_samples),
                kFailure);
        mTime += sound->nb_samples;
        encode(sound.get());
    }
}

void SoundConverter::encode(const AVFrame* sound) {
    CheckAv(avcodec_send_frame(mEncoder.get(), sound), kFailure);
    const AvPacket packet = NewPacket();
    while (avcodec_receive_packet(mEncoder.get(), packet.get()) >= 0) {
        packet->stream_index = mTo.index;
        av_packet_rescale_ts(packet.get(), mEncoder->time_base, mTo.time_base);
        mSink(*packet);
    }
}

} // namespace Kerovane::Host
