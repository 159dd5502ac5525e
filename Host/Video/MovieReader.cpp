#include "Host/Video/MovieReader.h"

#include "Host/Video/FrameTimes.h"
#include "Host/Video/LogWatch.h"
#include "Host/Video/OpenMovie.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace Kerovane::Host {

namespace {

constexpr int kMostErrorsInARow = 64;

/// Returns the stream's decoder. Prefers libvpx for VP8 and VP9 with alpha, because FFmpeg's own
/// decoders of them ignore alpha.
const AVCodec* DecoderFor(const AVStream& stream) {
    const AVCodecID id = stream.codecpar->codec_id;
    const AVDictionaryEntry* alpha = av_dict_get(stream.metadata, "alpha_mode", nullptr, 0);
    if (alpha != nullptr && std::string_view(alpha->value) == "1") {
        const char* name = id == AV_CODEC_ID_VP9   ? "libvpx-vp9"
                           : id == AV_CODEC_ID_VP8 ? "libvpx"
                                                   : nullptr;
        if (const AVCodec* found = name != nullptr ? avcodec_find_decoder_by_name(name) : nullptr) {
            return found;
        }
    }
    return avcodec_find_decoder(id);
}

Orientation OrientationOf(const AVStream& stream) {
    constexpr std::size_t kNumbers = 9;
    std::size_t size = 0;
    const std::uint8_t* data = av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &size);
    if (data == nullptr || size < kNumbers * sizeof(std::int32_t)) {
        return {};
    }
    const std::span<const std::int32_t, kNumbers> matrix(
        reinterpret_cast<const std::int32_t*>(data), kNumbers);
    return Orientation::of(matrix).value_or(Orientation());
}

/// Returns a tag from the file, which may hold any number, or `unspecified` if it is not below
/// `count`.
template <typename Tag>
Tag Checked(const Tag& tag, Tag count, Tag unspecified) {
    std::underlying_type_t<Tag> value = 0;
    std::memcpy(&value, &tag, sizeof value);
    return value < static_cast<std::underlying_type_t<Tag>>(count) ? static_cast<Tag>(value)
                                                                   : unspecified;
}

ColorTags TagsOf(const AVFrame& frame) {
    const ColorTags none;
    return {.matrix = Checked(frame.colorspace, AVCOL_SPC_NB, none.matrix),
            .range = Checked(frame.color_range, AVCOL_RANGE_NB, none.range),
            .primaries = Checked(frame.color_primaries, AVCOL_PRI_NB, none.primaries),
            .transfer = Checked(frame.color_trc, AVCOL_TRC_NB, none.transfer),
            .chroma = Checked(frame.chroma_location, AVCHROMA_LOC_NB, none.chroma)};
}

bool IsDamaged(const AVFrame& frame) {
    return (frame.flags & AV_FRAME_FLAG_CORRUPT) != 0 || frame.decode_error_flags != 0;
}

} // namespace

MovieReader::MovieReader(const std::filesystem::path& file) : mPath(file) {
    LogWatch::begin();
    mMovie = OpenMovie(file);
    mStream = VideoStreamOf(*mMovie, file);
    mStart = mMovie->start_time != AV_NOPTS_VALUE ? mMovie->start_time : 0;
    openDecoder();
    mErrors = LogWatch::errors(); // errors while probing are not damage
    mFirst = decode();
    if (!mFirst) {
        throw Error(
            fmt::format("cannot read '{}': no picture in it can be decoded", file.string()));
    }
}

void MovieReader::openDecoder() {
    const AVCodec* codec = DecoderFor(stream());
    if (codec == nullptr) {
        throw Error(fmt::format("cannot read '{}': there is no decoder for {}", mPath.string(),
                                avcodec_get_name(stream().codecpar->codec_id)));
    }
    const std::string failure = fmt::format("cannot read '{}'", mPath.string());
    mDecoder.reset(Allocated(avcodec_alloc_context3(codec)));
    CheckAv(avcodec_parameters_to_context(mDecoder.get(), stream().codecpar), failure);
    mDecoder->pkt_timebase = stream().time_base;
    mDecoder->thread_count = 0; // 0: FFmpeg uses one thread for each processor
    mDecoder->err_recognition |= AV_EF_CRCCHECK;
    CheckAv(avcodec_open2(mDecoder.get(), codec, nullptr), failure);
}

/// Sets mForm from the first frame, because the stream's header may not tell the pixel format
/// reliably.
void MovieReader::learnForm(const AVFrame& frame) {
    const auto format = static_cast<AVPixelFormat>(frame.format);
    const Orientation orientation = OrientationOf(stream());
    AVRational aspect =
        av_guess_sample_aspect_ratio(mMovie.get(), &stream(), const_cast<AVFrame*>(&frame));
    const AVRational rate = av_guess_frame_rate(mMovie.get(), &stream(), nullptr);
    mForm = {.width = frame.width,
             .height = frame.height,
             .bits = BitsOf(format),
             .hasAlpha = HasAlpha(format),
             .isRgb = IsRgb(format),
             .timeBase = stream().time_base,
             .frameRate = rate,
             .pixelAspect = aspect,
             .color = TagsOf(frame),
             .stored = orientation.isUpright() ? format : AV_PIX_FMT_NONE};
    if (orientation.swapsSides()) {
        std::swap(mForm.width, mForm.height);
        if (aspect.num != 0) {
            mForm.pixelAspect = {aspect.den, aspect.num};
        }
    }
    mInterlaced = frame.interlaced_frame != 0;
    mUnpacker.emplace(frame.width, frame.height,
                      PixelCoding{.format = format, .color = mForm.color}, orientation);
}

std::int64_t MovieReader::framesExpected() const {
    if (stream().nb_frames > 0) {
        return stream().nb_frames;
    }
    const double length =
        mMovie->duration > 0 ? static_cast<double>(mMovie->duration) / AV_TIME_BASE : 0;
    return mForm.frameRate.den > 0 ? std::lround(length * av_q2d(mForm.frameRate)) : 0;
}

void MovieReader::seek(std::int64_t number) {
    std::optional<std::int64_t> target;
    if (number > 0 && isSeekable()) {
        target = TimeOfFrame(mPath, mStream, number);
    }
    if (target) {
        *target -= fileTime(0);
        restartAt(*target);
    }
    const auto isBefore = [&](const MovieFrame& frame) {
        return target ? frame.time < *target : frame.number < number;
    };
    std::vector<AvPacket> others;
    std::optional<MovieFrame> frame;
    do {
        frame = read();
        if (!frame) {
            throw Error(fmt::format("'{}' ends before frame {}", mPath.string(), number));
        }
        std::ranges::move(frame->others, std::back_inserter(others));
    } while (isBefore(*frame));
    if (target) { // after seeking, decoders report errors about frames that refer to skipped ones
        mDamage = {};
        mErrors = LogWatch::errors();
    }
    frame->others = std::move(others);
    frame->number = number;
    mNumber = number + 1;
    mFirst = std::move(frame);
}

std::optional<MovieFrame> MovieReader::read() {
    return mFirst ? std::exchange(mFirst, std::nullopt) : decode();
}

std::optional<MovieFrame> MovieReader::decode() {
    int errors = 0;
    while (!mHasEnded) {
        AvFrame frame = NewFrame();
        const int code = avcodec_receive_frame(mDecoder.get(), frame.get());
        if (code == 0) {
            return accept(std::move(frame));
        }
        if (code == AVERROR(EAGAIN)) {
            feed();
        } else if (code == AVERROR_EOF || ++errors > kMostErrorsInARow) {
            mHasEnded = true;
            noteMissingEnd();
        } else {
            noteDamage(mEnd, mLastSent);
        }
    }
    return std::nullopt;
}

std::optional<MovieFrame> MovieReader::accept(AvFrame frame) {
    if (!mUnpacker) {
        learnForm(*frame);
    }
    MovieFrame movieFrame{.number = mNumber};
    movieFrame.time = frame->best_effort_timestamp != AV_NOPTS_VALUE
                          ? frame->best_effort_timestamp - fileTime(0)
                          : mEnd;
    movieFrame.duration =
        frame->pkt_duration > 0
            ? frame->pkt_duration
            : std::max<std::int64_t>(
                  1, std::llround(1 / (av_q2d(mForm.frameRate) * av_q2d(mForm.timeBase))));
    if (!mUnpacker->takes(*frame)) {
        mEndedEarly = fmt::format("the pictures change to {} x {} pixels at {:.3f} s", frame->width,
                                  frame->height, seconds(std::max(movieFrame.time, mEnd)));
        mHasEnded = true;
        return std::nullopt;
    }
    if (IsDamaged(*frame)) {
        noteDamage(movieFrame.time, movieFrame.time + movieFrame.duration);
    }
    noteLoggedDamage(movieFrame);
    ++mNumber;
    mEnd = movieFrame.time + movieFrame.duration;
    movieFrame.frame = std::move(frame);
    movieFrame.others = std::exchange(mOthers, {});
    return movieFrame;
}

/// Sends the decoder the next packet of the picture stream and collects those of other streams.
void MovieReader::feed() {
    int errors = 0;
    while (true) {
        const int code = av_read_frame(mMovie.get(), mPacket.get());
        if (code == AVERROR_EOF) {
            endInput();
            return;
        }
        if (code < 0 && code != AVERROR(EAGAIN)) {
            noteDamage(mEnd, mLastSent);
            if (++errors > kMostErrorsInARow || mMovie->pb == nullptr || mMovie->pb->error < 0) {
                endInput();
                return;
            }
            continue;
        }
        if (code < 0) {
            continue;
        }
        if (mPacket->stream_index != mStream) {
            AvPacket other = NewPacket();
            av_packet_move_ref(other.get(), mPacket.get());
            mOthers.push_back(std::move(other));
            continue;
        }
        break;
    }
    const std::int64_t time = mPacket->pts != AV_NOPTS_VALUE ? mPacket->pts : mPacket->dts;
    if (time != AV_NOPTS_VALUE) {
        mLastSent = time - fileTime(0);
    }
    if (avcodec_send_packet(mDecoder.get(), mPacket.get()) < 0) {
        noteDamage(mLastSent, mLastSent + std::max<std::int64_t>(mPacket->duration, 0));
    }
    av_packet_unref(mPacket.get());
}

void MovieReader::endInput() {
    if (!std::exchange(mInputEnded, true)) {
        avcodec_send_packet(mDecoder.get(), nullptr);
    }
}

std::vector<AvPacket> MovieReader::readOthers(std::int64_t end) {
    std::vector<AvPacket> others = std::exchange(mOthers, {});
    // Reads one second past `end`. This assumes that no stream runs further ahead of another in the
    // file.
    const std::int64_t enough =
        av_rescale_q(end, mForm.timeBase, kAvMicroseconds) + mStart + AV_TIME_BASE;
    int errors = 0;
    while (!mInputEnded && errors < kMostErrorsInARow) {
        AvPacket packet = NewPacket();
        const int code = av_read_frame(mMovie.get(), packet.get());
        if (code == AVERROR_EOF) {
            break;
        }
        if (code < 0) {
            ++errors;
            continue;
        }
        const AVRational unit = mMovie->streams[packet->stream_index]->time_base;
        const bool isEnough = packet->dts != AV_NOPTS_VALUE &&
                              av_compare_ts(packet->dts, unit, enough, kAvMicroseconds) > 0;
        if (packet->stream_index != mStream) {
            others.push_back(std::move(packet));
        }
        if (isEnough) {
            break;
        }
    }
    return others;
}

bool MovieReader::isSeekable() const {
    return mMovie->pb != nullptr && (mMovie->pb->seekable & AVIO_SEEKABLE_NORMAL) != 0;
}

/// Seeks to a key frame at least a second before `time`, so that the sound at `time` is read too.
void MovieReader::restartAt(std::int64_t time) {
    const std::int64_t second = av_rescale_q(AV_TIME_BASE, kAvMicroseconds, mForm.timeBase);
    const std::int64_t target = fileTime(time) - second;
    if (avformat_seek_file(mMovie.get(), mStream, INT64_MIN, target, target, 0) < 0) {
        return; // stays at the current position, which is earlier
    }
    avcodec_flush_buffers(mDecoder.get());
    mOthers.clear();
    mFirst.reset();
    mInputEnded = false;
    mHasEnded = false;
}

/// Converts a time from the movie's start to a timestamp of the file's picture stream.
std::int64_t MovieReader::fileTime(std::int64_t time) const {
    return time + av_rescale_q(mStart, kAvMicroseconds, stream().time_base);
}

double MovieReader::seconds(std::int64_t time) const {
    return static_cast<double>(time) * av_q2d(stream().time_base);
}

void MovieReader::noteDamage(std::int64_t from, std::int64_t to) {
    mDamage.add(seconds(from), seconds(to));
    mErrors = LogWatch::errors();
}

/// Records errors logged since the last frame. The damage may lie anywhere up to the packet last
/// sent, because multithreaded decoders run ahead of the frames that they return.
void MovieReader::noteLoggedDamage(const MovieFrame& frame) {
    if (LogWatch::errors() != mErrors) {
        noteDamage(std::min(mEnd, frame.time), std::max(mLastSent, frame.time + frame.duration));
    }
}

/// Records as damage what a truncated file lacks between its last frame and its stated length.
void MovieReader::noteMissingEnd() {
    if (LogWatch::errors() != mErrors) {
        noteDamage(mEnd, mLastSent);
    }
    constexpr double kTolerance = 0.5; // in seconds; a shorter gap at the end is not damage
    const double end = seconds(mEnd);
    const bool breaksOff = !mDamage.isEmpty() && mDamage.stretches().back().to + kTolerance > end;
    double length = 0;
    if (stream().duration > 0) {
        length = seconds(stream().duration);
    } else if (breaksOff && mMovie->duration > 0) {
        length = static_cast<double>(mMovie->duration) / AV_TIME_BASE;
    }
    if (end + kTolerance < length) {
        mDamage.add(end, length);
    }
}

} // namespace Kerovane::Host
