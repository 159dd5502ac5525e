#include "Host/Video/SubtitleConverter.h"

#include <algorithm>
#include <cstring>

namespace Kerovane::Host {

namespace {

constexpr const char* kFailure = "the subtitles can't be converted";
constexpr AVRational kMilliseconds{1, 1000};

/// A decoded subtitle that frees its content.
struct Subtitle : AVSubtitle {
    Subtitle() : AVSubtitle() {}
    ~Subtitle() { avsubtitle_free(this); }
    Subtitle(const Subtitle&) = delete;
    Subtitle& operator=(const Subtitle&) = delete;
};

} // namespace

bool IsTextSubtitle(AVCodecID codec) {
    const AVCodecDescriptor* descriptor = avcodec_descriptor_get(codec);
    return descriptor != nullptr && (descriptor->props & AV_CODEC_PROP_TEXT_SUB) != 0;
}

SubtitleConverter::SubtitleConverter(const AVStream& from, AVStream& to, AVCodecID id,
                                     PacketSink sink)
    : mTo(to), mSink(std::move(sink)) {
    const AVCodec* decoder = avcodec_find_decoder(from.codecpar->codec_id);
    const AVCodec* encoder = avcodec_find_encoder(id);
    if (decoder == nullptr || encoder == nullptr) {
        throw Error(kFailure);
    }
    mDecoder.reset(Allocated(avcodec_alloc_context3(decoder)));
    CheckAv(avcodec_parameters_to_context(mDecoder.get(), from.codecpar), kFailure);
    mDecoder->pkt_timebase = from.time_base;
    CheckAv(avcodec_open2(mDecoder.get(), decoder, nullptr), kFailure);

    mEncoder.reset(Allocated(avcodec_alloc_context3(encoder)));
    mEncoder->time_base = kAvMicroseconds;
    if (mDecoder->subtitle_header != nullptr) {
        const auto size = static_cast<std::size_t>(mDecoder->subtitle_header_size);
        mEncoder->subtitle_header = static_cast<std::uint8_t*>(Allocated(av_mallocz(size + 1)));
        std::memcpy(mEncoder->subtitle_header, mDecoder->subtitle_header, size);
        mEncoder->subtitle_header_size = mDecoder->subtitle_header_size;
    }
    CheckAv(avcodec_open2(mEncoder.get(), encoder, nullptr), kFailure);
    CheckAv(avcodec_parameters_from_context(to.codecpar, mEncoder.get()), kFailure);
    to.time_base = kMilliseconds;
}

void SubtitleConverter::carry(AVPacket& packet) {
    constexpr int kLargest = 1 << 20;
    Subtitle subtitle;
    int found = 0;
    if (avcodec_decode_subtitle2(mDecoder.get(), &subtitle, &found, &packet) < 0 || found == 0 ||
        subtitle.num_rects == 0) {
        return;
    }
    const AvPacket made = NewPacket();
    CheckAv(av_new_packet(made.get(), kLargest), kFailure);
    const std::int64_t start = subtitle.start_display_time;
    made->pts = av_rescale_q(packet.pts, mDecoder->pkt_timebase, kMilliseconds) + start;
    made->dts = made->pts;
    const std::int64_t shown = subtitle.end_display_time - start;
    made->duration = packet.duration > 0
                         ? av_rescale_q(packet.duration, mDecoder->pkt_timebase, kMilliseconds)
                         : shown;
    subtitle.start_display_time = 0;
    subtitle.end_display_time = static_cast<std::uint32_t>(std::max<std::int64_t>(shown, 0));
    const int size =
        CheckAv(avcodec_encode_subtitle(mEncoder.get(), made->data, kLargest, &subtitle), kFailure);
    av_shrink_packet(made.get(), size);
    made->stream_index = mTo.index;
    av_packet_rescale_ts(made.get(), kMilliseconds, mTo.time_base);
    mSink(*made);
}

} // namespace Kerovane::Host
