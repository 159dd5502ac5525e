#include "Host/Video/Container.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace Kerovane::Host {

namespace {

template <typename List, typename Value>
bool Contains(const List& list, const Value& value) {
    return std::ranges::find(list, value) != list.end();
}

/// Returns whether a codec fits MP4 but not MOV. FFmpeg claims that MOV holds these codecs and then
/// fails when writing.
bool IsForMp4Only(AVCodecID codec) {
    constexpr std::array kCodecs{AV_CODEC_ID_FLAC, AV_CODEC_ID_OPUS, AV_CODEC_ID_TRUEHD,
                                 AV_CODEC_ID_VP9, AV_CODEC_ID_AV1};
    return Contains(kCodecs, codec);
}

} // namespace

bool IsLikeMov(const AVOutputFormat& container) {
    constexpr std::array<std::string_view, 4> kNames{"mp4", "mov", "ipod", "ismv"};
    return Contains(kNames, std::string_view(container.name));
}

bool HoldsCodec(const AVOutputFormat& container, AVCodecID codec) {
    if (std::string_view(container.name) == "mov" && IsForMp4Only(codec)) {
        return false;
    }
    const int answer = avformat_query_codec(&container, codec, FF_COMPLIANCE_NORMAL);
    // A negative answer means that the container does not tell. Then accepts the codec if the
    // container has a default codec for this kind of stream.
    return answer == 1 ||
           (answer < 0 && UsualCodec(container, avcodec_get_type(codec)) != AV_CODEC_ID_NONE);
}

AVCodecID UsualCodec(const AVOutputFormat& container, AVMediaType kind) {
    switch (kind) {
    case AVMEDIA_TYPE_VIDEO:
        return container.video_codec;
    case AVMEDIA_TYPE_AUDIO:
        return container.audio_codec;
    case AVMEDIA_TYPE_SUBTITLE:
        return IsLikeMov(container) ? AV_CODEC_ID_MOV_TEXT : container.subtitle_codec;
    default:
        return AV_CODEC_ID_NONE;
    }
}

} // namespace Kerovane::Host
