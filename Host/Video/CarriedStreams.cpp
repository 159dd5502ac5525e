#include "Host/Video/CarriedStreams.h"

#include "Host/Video/Container.h"
#include "Host/Video/PcmPacket.h"
#include "Host/Video/SoundConverter.h"
#include "Host/Video/SubtitleConverter.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace Kerovane::Host {

namespace {

/// Copies packets without re-encoding.
class StreamCopier : public StreamCarrier {
public:
    StreamCopier(const AVStream& from, AVStream& to, PacketSink sink)
        : mFrom(from), mTo(to), mSink(std::move(sink)) {
        CheckAv(avcodec_parameters_copy(to.codecpar, from.codecpar), "a stream can't be copied");
        to.codecpar->codec_tag = 0; // tags differ between containers
        to.time_base = from.time_base;
    }

    void carry(AVPacket& packet) override {
        packet.stream_index = mTo.index;
        packet.pos = -1;
        av_packet_rescale_ts(&packet, mFrom.time_base, mTo.time_base);
        mSink(packet);
    }

private:
    const AVStream& mFrom;
    AVStream& mTo;
    PacketSink mSink;
};

const char* NameOf(const AVStream& stream) {
    switch (stream.codecpar->codec_type) {
    case AVMEDIA_TYPE_AUDIO:
        return "sound";
    case AVMEDIA_TYPE_SUBTITLE:
        return "subtitles";
    case AVMEDIA_TYPE_ATTACHMENT:
        return "attachment";
    case AVMEDIA_TYPE_VIDEO:
        return "other pictures";
    default:
        return "data";
    }
}

bool Holds(const AVOutputFormat& container, const AVStream& stream) {
    const AVMediaType kind = stream.codecpar->codec_type;
    if (kind == AVMEDIA_TYPE_ATTACHMENT) {
        return std::string_view(container.name) == "matroska";
    }
    if (kind == AVMEDIA_TYPE_DATA) {
        return false;
    }
    return HoldsCodec(container, stream.codecpar->codec_id);
}

/// Returns whether a data stream holds only a time code. It need not be carried, because the
/// target's muxer writes a time code from the metadata.
bool IsTimeCode(const AVStream& stream) {
    return stream.codecpar->codec_type == AVMEDIA_TYPE_DATA &&
           av_dict_get(stream.metadata, "timecode", nullptr, 0) != nullptr;
}

bool CanConvert(const AVStream& stream, AVCodecID usual) {
    const bool isText = stream.codecpar->codec_type == AVMEDIA_TYPE_SUBTITLE;
    return usual != AV_CODEC_ID_NONE && usual != stream.codecpar->codec_id &&
           (!isText || (IsTextSubtitle(usual) && IsTextSubtitle(stream.codecpar->codec_id)));
}

} // namespace

CarriedStreams::CarriedStreams(const AVFormatContext& source, int video, std::int64_t start,
                               AVFormatContext& target, const PacketSink& sink)
    : mTarget(target), mFileStart(start) {
    for (unsigned i = 0; i < source.nb_streams; ++i) {
        mStreams.emplace_back();
        if (static_cast<int>(i) != video) {
            addStream(*source.streams[i], sink);
        }
    }
    addChapters(source);
}

void CarriedStreams::addStream(const AVStream& from, const PacketSink& sink) {
    const bool isMoving = from.codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
                          (from.disposition & AV_DISPOSITION_ATTACHED_PIC) == 0;
    const AVOutputFormat& container = *mTarget.oformat;
    const AVCodecID usual = UsualCodec(container, from.codecpar->codec_type);
    const bool holds = Holds(container, from) && !isMoving;
    if (IsTimeCode(from)) {
        return;
    }
    if (!holds && !CanConvert(from, usual)) {
        mNotes.push_back(fmt::format("{} ({}) left out: {} files cannot hold it", NameOf(from),
                                     avcodec_get_name(from.codecpar->codec_id), container.name));
        return;
    }
    AVStream* to = Allocated(avformat_new_stream(&mTarget, nullptr));
    Stream& stream = mStreams.back();
    stream.from = &from;
    stream.to = to;
    if (holds) {
        stream.carrier = std::make_unique<StreamCopier>(from, *to, sink);
    } else {
        stream.carrier = converterFor(from, *to, usual, sink);
        mNotes.push_back(fmt::format("{} converted from {} to {}, which {} files hold",
                                     NameOf(from), avcodec_get_name(from.codecpar->codec_id),
                                     avcodec_get_name(usual), container.name));
    }
    to->disposition = from.disposition;
    av_dict_copy(&to->metadata, from.metadata, 0);
    if ((from.disposition & AV_DISPOSITION_ATTACHED_PIC) != 0) {
        AvPacket cover(Allocated(av_packet_clone(&from.attached_pic)));
        stream.waiting.push_back(std::move(cover));
    }
}

std::unique_ptr<StreamCarrier> CarriedStreams::converterFor(const AVStream& from, AVStream& to,
                                                            AVCodecID codec,
                                                            const PacketSink& sink) const {
    if (from.codecpar->codec_type == AVMEDIA_TYPE_SUBTITLE) {
        return std::make_unique<SubtitleConverter>(from, to, codec, sink);
    }
    const bool globalHeader = (mTarget.oformat->flags & AVFMT_GLOBALHEADER) != 0;
    return std::make_unique<SoundConverter>(from, to, codec, globalHeader, sink);
}

void CarriedStreams::addChapters(const AVFormatContext& source) {
    for (unsigned i = 0; i < source.nb_chapters; ++i) {
        const AVChapter& from = *source.chapters[i];
        auto* chapter = static_cast<AVChapter*>(Allocated(av_mallocz(sizeof(AVChapter))));
        chapter->id = from.id;
        chapter->time_base = kAvMicroseconds;
        chapter->start = av_rescale_q(from.start, from.time_base, kAvMicroseconds) - mFileStart;
        chapter->end = av_rescale_q(from.end, from.time_base, kAvMicroseconds) - mFileStart;
        av_dict_copy(&chapter->metadata, from.metadata, 0);
        av_dynarray_add(&mTarget.chapters, reinterpret_cast<int*>(&mTarget.nb_chapters), chapter);
    }
}

void CarriedStreams::startAt(std::int64_t time, bool isCut, std::int64_t length) {
    mStart = time;
    mIsCut = isCut;
    unsigned kept = 0;
    for (unsigned i = 0; i < mTarget.nb_chapters; ++i) {
        AVChapter* chapter = mTarget.chapters[i];
        chapter->start -= time;
        chapter->end -= time;
        if (isCut) {
            chapter->start = std::max<std::int64_t>(chapter->start, 0);
            chapter->end = std::min(chapter->end, length);
        }
        if (isCut && chapter->end <= chapter->start) {
            av_dict_free(&chapter->metadata);
            av_free(chapter);
        } else {
            mTarget.chapters[kept++] = chapter;
        }
    }
    mTarget.nb_chapters = kept;
}

void CarriedStreams::add(std::vector<AvPacket> packets) {
    for (AvPacket& packet : packets) {
        const auto index = static_cast<std::size_t>(packet->stream_index);
        if (index >= mStreams.size() || mStreams[index].carrier == nullptr) {
            continue; // the stream is left out, or appeared in the middle of the file
        }
        Stream& stream = mStreams[index];
        const std::int64_t shift =
            av_rescale_q(mFileStart + mStart, kAvMicroseconds, stream.from->time_base);
        for (std::int64_t* time : {&packet->pts, &packet->dts}) {
            *time -= *time != AV_NOPTS_VALUE ? shift : 0;
        }
        stream.waiting.push_back(std::move(packet));
    }
}

void CarriedStreams::writeUntil(std::int64_t time) {
    const auto isBefore = [time](const Stream& stream) {
        const AVPacket& packet = *stream.waiting.front();
        const std::int64_t start = packet.pts != AV_NOPTS_VALUE ? packet.pts : packet.dts;
        return start == AV_NOPTS_VALUE ||
               av_compare_ts(start + packet.duration, stream.from->time_base, time,
                             kAvMicroseconds) <= 0;
    };
    for (Stream& stream : mStreams) {
        while (!stream.waiting.empty() && isBefore(stream)) {
            write(stream, std::numeric_limits<std::int64_t>::max());
        }
    }
}

void CarriedStreams::finish(std::int64_t end) {
    for (Stream& stream : mStreams) {
        while (!stream.waiting.empty()) {
            write(stream, end);
        }
        if (stream.carrier != nullptr) {
            stream.carrier->finish();
        }
    }
}

/// Writes or drops the stream's next packet, depending on whether it lies within the movie. PCM
/// packets that extend beyond the movie are cut at the exact sample.
void CarriedStreams::write(Stream& stream, std::int64_t end) {
    const AvPacket packet = std::move(stream.waiting.front());
    stream.waiting.pop_front();
    const AVRational unit = stream.from->time_base;
    const bool hasTime = packet->pts != AV_NOPTS_VALUE;
    const bool isEndless = end == std::numeric_limits<std::int64_t>::max();
    const std::int64_t last = isEndless ? end : av_rescale_q(end, kAvMicroseconds, unit);
    if (hasTime && PcmBlockSize(*stream.from->codecpar) > 0 && (mIsCut || !isEndless)) {
        CutPcm(*packet, *stream.from->codecpar, unit, mIsCut ? 0 : packet->pts, last);
        if (packet->size == 0) {
            return;
        }
    } else if (hasTime && ((mIsCut && packet->pts < 0) || packet->pts >= last)) {
        return;
    }
    stream.carrier->carry(*packet);
}

} // namespace Kerovane::Host
