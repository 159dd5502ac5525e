#include "Host/Video/MovieWriter.h"

#include "Host/Text/WordList.h"
#include "Host/Video/Container.h"
#include "Host/Video/OpenMovie.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace Kerovane::Host {

namespace {

std::string ExtensionOf(const std::filesystem::path& file) {
    std::string extension = file.extension();
    std::ranges::transform(extension, extension.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return extension;
}

const AVOutputFormat& ContainerFor(const std::filesystem::path& target, const std::string& name) {
    if (!name.empty()) {
        const AVOutputFormat* found = av_guess_format(name.c_str(), nullptr, nullptr);
        if (found == nullptr) {
            throw Error(fmt::format("--container: this build of FFmpeg can't write '{}'", name));
        }
        return *found;
    }
    const std::string extension = target == kStandardStream ? ".nut" : ExtensionOf(target);
    const AVOutputFormat* found = av_guess_format(nullptr, ("x" + extension).c_str(), nullptr);
    if (found == nullptr) {
        throw Error(fmt::format("cannot write '{}': no movie has the extension '{}'; {} are "
                                "written, and others by --container",
                                target.string(), extension, WordList(MovieExtensions())));
    }
    return *found;
}

/// Returns the extension that decides on the default codec: the target's, or the container's usual
/// one if the target has none or the container was named.
std::string ExtensionFor(const std::filesystem::path& target, const AVOutputFormat& container,
                         bool isNamed) {
    if (!isNamed && target != kStandardStream) {
        return ExtensionOf(target);
    }
    const std::string_view names = container.extensions != nullptr ? container.extensions : "";
    return fmt::format(".{}", names.substr(0, names.find(',')));
}

/// Removes metadata that describes the source's encoding rather than its content.
void RemoveStale(AVDictionary*& metadata) {
    for (const char* name :
         {"rotate", "encoder", "DURATION", "BPS", "NUMBER_OF_FRAMES", "NUMBER_OF_BYTES",
          "alpha_mode", "major_brand", "minor_version", "compatible_brands"}) {
        av_dict_set(&metadata, name, nullptr, 0);
    }
}

/// Returns the time code `text` advanced by `frames`.
std::string Advanced(const char* text, AVRational rate, std::int64_t frames) {
    AVTimecode code;
    if (av_timecode_init_from_string(&code, rate, text, nullptr) < 0) {
        return text;
    }
    std::array<char, AV_TIMECODE_STR_SIZE> later{};
    return av_timecode_make_string(&code, later.data(), static_cast<int>(frames));
}

} // namespace

MovieWriter::MovieWriter(const std::filesystem::path& target, const MovieForm& form,
                         const MovieSettings& settings, int standardOutput)
    : mTarget(target), mForm(form) {
    const AVOutputFormat& container = ContainerFor(target, settings.container);
    AVFormatContext* movie = nullptr;
    check(avformat_alloc_output_context2(&movie, &container, nullptr, nullptr));
    mMovie.reset(movie);
    chooseCodec(settings);
    choosePixels(settings);
    mStream = Allocated(avformat_new_stream(movie, nullptr));
    openEncoder(settings);
    std::string address = fmt::format("pipe:{}", standardOutput);
    if (target != kStandardStream) {
        address = "file:" + mFile.emplace(target).path().string();
    }
    check(avio_open(&movie->pb, address.c_str(), AVIO_FLAG_WRITE));
}

MovieWriter::~MovieWriter() {
    avio_closep(&mMovie->pb);
}

void MovieWriter::chooseCodec(const MovieSettings& settings) {
    const AVOutputFormat& container = *mMovie->oformat;
    if (!settings.codec.empty()) {
        try {
            mCodec = &CodecNamed(settings.codec);
        } catch (const Error& error) {
            throw Error(fmt::format("--codec {}", error.what()));
        }
    } else {
        const std::string extension = ExtensionFor(mTarget, container, !settings.container.empty());
        mCodec = CodecForExtension(extension);
        if (mCodec == nullptr) {
            throw Error(fmt::format("--codec is needed for {} files", container.name));
        }
        mCodec = &CodecNamed(mCodec->name);
    }
    const AVCodecID id = mCodec->find()->id;
    if (!HoldsCodec(container, id)) {
        throw Error(
            fmt::format("--codec {}: {} files don't hold it", mCodec->name, container.name));
    }
}

void MovieWriter::choosePixels(const MovieSettings& settings) {
    constexpr std::array<std::string_view, 2> kShallowFiles{".mp4", ".m4v"};
    const bool isShallow =
        std::ranges::find(kShallowFiles, ExtensionOf(mTarget)) != kShallowFiles.end();
    const int bits = settings.bits.value_or(isShallow ? 8 : mForm.bits);
    mCoding.format = mCodec->formatFor({.deep = bits > 8, .alpha = settings.alpha});
    const int had = BitsOf(mCoding.format);
    if (settings.bits && (had > 8) != (*settings.bits > 8) && mCoding.format != AV_PIX_FMT_PAL8) {
        throw Error(
            fmt::format("--bits {}: {} has {} bits here", *settings.bits, mCodec->name, had));
    }
    const bool isOdd = mForm.width % 2 != 0 || mForm.height % 2 != 0;
    if (isOdd && mCodec->needsEvenSides) {
        mCoding.format =
            mCoding.format == AV_PIX_FMT_YUV420P ? AV_PIX_FMT_YUV444P : AV_PIX_FMT_YUV444P10;
        mNotes.push_back(fmt::format("{} x {} is odd: colour is stored at full size (4:4:4), which "
                                     "not all players show",
                                     mForm.width, mForm.height));
    }
    mCoding.color = mForm.color;
    if (IsRgb(mCoding.format)) {
        mCoding.color.matrix = AVCOL_SPC_RGB;
        mCoding.color.range = AVCOL_RANGE_JPEG;
    } else if (mForm.isRgb) {
        mCoding.color.matrix = AVCOL_SPC_BT709;
        mCoding.color.range = AVCOL_RANGE_MPEG;
        if (mCoding.color.primaries == AVCOL_PRI_UNSPECIFIED) {
            mCoding.color.primaries = AVCOL_PRI_BT709;
        }
        if (mCoding.color.transfer == AVCOL_TRC_UNSPECIFIED) {
            mCoding.color.transfer = AVCOL_TRC_BT709;
        }
    }
    mPacker.emplace(mForm.width, mForm.height, mCoding);
}

void MovieWriter::openEncoder(const MovieSettings& settings) {
    const AVCodec* codec = mCodec->find();
    mEncoder.reset(Allocated(avcodec_alloc_context3(codec)));
    AVCodecContext& encoder = *mEncoder;
    encoder.width = mForm.width;
    encoder.height = mForm.height;
    encoder.pix_fmt = mCoding.format;
    encoder.time_base = mForm.frameRate.num > 0 ? av_inv_q(mForm.frameRate) : mForm.timeBase;
    encoder.framerate = mForm.frameRate;
    encoder.sample_aspect_ratio = mForm.pixelAspect;
    encoder.colorspace = mCoding.color.matrix;
    encoder.color_range = mCoding.color.range;
    encoder.color_primaries = mCoding.color.primaries;
    encoder.color_trc = mCoding.color.transfer;
    encoder.chroma_sample_location = mCoding.color.chroma;
    encoder.thread_count = 0; // 0: FFmpeg uses one thread for each processor
    if ((mMovie->oformat->flags & AVFMT_GLOBALHEADER) != 0) {
        encoder.flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    }
    AvOptions options;
    if (mCodec->prepare != nullptr) {
        mCodec->prepare(encoder, options);
    }
    constexpr int kGoodQuality = 66;
    if (settings.bitRate) {
        encoder.bit_rate = *settings.bitRate;
    } else if (mCodec->setQuality != nullptr) {
        if (settings.quality || mCodec->needsQuality) {
            mCodec->setQuality(encoder, options, settings.quality.value_or(kGoodQuality));
        }
    }
    if ((settings.quality || settings.bitRate) && mCodec->setQuality == nullptr) {
        mNotes.push_back(fmt::format("{} has no choice of quality", mCodec->name));
    }
    if (av_dict_parse_string(options.address(), settings.codecOptions.c_str(), "=", ":,", 0) < 0) {
        throw Error(fmt::format("--codec-options takes NAME=VALUE:NAME=VALUE, not '{}'",
                                settings.codecOptions));
    }
    const int code = avcodec_open2(&encoder, codec, options.address());
    if (code < 0) {
        throw Error(fmt::format("cannot encode {} x {} pixels as {}: {}", mForm.width, mForm.height,
                                mCodec->name, AvErrorText(code)));
    }
    if (!options.left().empty()) {
        throw Error(
            fmt::format("--codec-options: {} has no option '{}'", mCodec->name, options.left()));
    }
    check(avcodec_parameters_from_context(mStream->codecpar, &encoder));
    if (mCodec->tag != 0 && std::string_view(mMovie->oformat->name) != "matroska") {
        mStream->codecpar->codec_tag = mCodec->tag;
    }
    mStream->time_base = mForm.timeBase;
    mStream->avg_frame_rate = mForm.frameRate;
    mStream->sample_aspect_ratio = mForm.pixelAspect;
}

void MovieWriter::carryFrom(const MovieReader& reader, std::optional<std::int64_t> cutFrames) {
    mSource = &reader;
    mIsCut = cutFrames.has_value();
    mCutFrames = cutFrames.value_or(0);
    mCarried.emplace(reader.source(), reader.videoStream(), reader.startTime(), *mMovie,
                     [this](AVPacket& packet) { send(packet); });
    mNotes.insert(mNotes.end(), mCarried->notes().begin(), mCarried->notes().end());
}

void MovieWriter::begin(std::int64_t time) {
    mStart = mIsCut ? time : 0;
    if (mSource != nullptr) {
        mCarried->startAt(microseconds(*mStart), mIsCut,
                          av_rescale_q(mCutFrames, mEncoder->time_base, kAvMicroseconds));
        copyMetadata(*mStart);
    }
    check(avformat_write_header(mMovie.get(), nullptr));
}

void MovieWriter::copyMetadata(std::int64_t time) {
    const AVStream& from = *mSource->source().streams[mSource->videoStream()];
    av_dict_copy(&mMovie->metadata, mSource->source().metadata, 0);
    av_dict_copy(&mStream->metadata, from.metadata, 0);
    mStream->disposition = from.disposition;
    for (AVDictionary** metadata : {&mMovie->metadata, &mStream->metadata}) {
        RemoveStale(*metadata);
        if (const AVDictionaryEntry* code = av_dict_get(*metadata, "timecode", nullptr, 0)) {
            const std::int64_t frames =
                av_rescale_q(time, mForm.timeBase, av_inv_q(mForm.frameRate));
            const std::string advanced = Advanced(code->value, mForm.frameRate, frames);
            av_dict_set(metadata, "timecode", advanced.c_str(), 0);
        }
    }
}

void MovieWriter::write(AvFrame frame, std::int64_t time, std::int64_t duration,
                        std::vector<AvPacket> others) {
    if (!mStart) {
        begin(time);
    }
    const std::int64_t newTime =
        mWritten == 0 ? time - *mStart : std::max(time - *mStart, mLast + 1);
    mTimes[mWritten] = {newTime, duration};
    mLast = newTime;
    mEnd = newTime + duration;
    frame->pts = mWritten++;
    frame->sample_aspect_ratio = mForm.pixelAspect;
    if (mCarried) {
        mCarried->add(std::move(others));
        mCarried->writeUntil(microseconds(mLast));
    }
    encode(frame.get());
}

void MovieWriter::encode(const AVFrame* frame) {
    check(avcodec_send_frame(mEncoder.get(), frame));
    const AvPacket packet = NewPacket();
    while (avcodec_receive_packet(mEncoder.get(), packet.get()) >= 0) {
        packet->stream_index = mStream->index;
        setTimes(*packet);
        av_packet_rescale_ts(packet.get(), mForm.timeBase, mStream->time_base);
        send(*packet);
    }
}

/// Replaces a packet's timestamps, which count frames, by the times of those frames.
void MovieWriter::setTimes(AVPacket& packet) {
    const FrameSpan shown = mTimes.at(packet.pts);
    // Encoders that reorder frames let decoding begin before the first frame is shown.
    if (packet.dts < 0) {
        const AVRational frame = mEncoder->time_base;
        packet.dts = mTimes.begin()->second.time + av_rescale_q(packet.dts, frame, mForm.timeBase);
    } else {
        const std::int64_t count = packet.dts;
        packet.dts = mTimes.at(count).time;
        mTimes.erase(mTimes.begin(), mTimes.find(count));
    }
    packet.pts = shown.time;
    packet.duration = shown.duration;
}

void MovieWriter::send(AVPacket& packet) {
    check(av_interleaved_write_frame(mMovie.get(), &packet));
    check(mMovie->pb->error);
}

void MovieWriter::finish(std::vector<AvPacket> others, bool endsEarly) {
    if (!mStart) {
        throw Error(fmt::format("cannot write '{}': there is no frame for it", mTarget.string()));
    }
    end(std::move(others), !mIsCut && !endsEarly);
    if (mFile) {
        mFile->takePlace();
    }
}

std::filesystem::path MovieWriter::finishPartial() {
    if (!mStart) {
        return {};
    }
    end({}, false);
    if (!mFile) {
        return mTarget;
    }
    std::filesystem::path partial = mTarget;
    partial.replace_extension(".partial" + mTarget.extension().string());
    mFile->takePlaceOf(partial);
    return partial;
}

void MovieWriter::end(std::vector<AvPacket> others, bool isWhole) {
    if (mPacker->hasLostAlpha()) {
        mNotes.push_back(fmt::format("{} has no alpha here: holes are black", mCodec->name));
    }
    encode(nullptr);
    if (mCarried) {
        mCarried->add(std::move(others));
        isWhole ? mCarried->finish() : mCarried->finish(microseconds(mEnd));
    }
    check(av_write_trailer(mMovie.get()));
    const int error = mMovie->pb->error;
    check(avio_closep(&mMovie->pb));
    check(error);
}

std::int64_t MovieWriter::microseconds(std::int64_t time) const {
    return av_rescale_q(time, mForm.timeBase, kAvMicroseconds);
}

void MovieWriter::check(int code) const {
    CheckAv(code, fmt::format("cannot write '{}'", mTarget.string()));
}

} // namespace Kerovane::Host
