#include "Host/Video/VideoCodec.h"

#include "Host/Text/Choice.h"
#include "Host/Text/WordList.h"
#include "Host/Video/ScalerPool.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

namespace Kerovane::Host {

namespace {

/// Maps a quality from 1 to 100 to the codec's scale from `worst` to `best`.
int Scaled(int quality, double best, double worst) {
    constexpr double kSteps = 99;
    return static_cast<int>(worst + (best - worst) * (quality - 1) / kSteps + 0.5);
}

/// Quality 66 becomes the encoders' CRF 18, which looks like the original. The scale excludes CRF
/// 0, lossless, because it needs a profile that few players support.
void SetH26xQuality(AVCodecContext&, AvOptions& options, int quality) {
    options.set("crf", fmt::format("{}", Scaled(quality, 1, 51)));
}

void SetVp9Quality(AVCodecContext& context, AvOptions& options, int quality) {
    options.set("crf", fmt::format("{}", Scaled(quality, 1, 63)));
    context.bit_rate = 0;
}

void SetProresQuality(AVCodecContext& context, AvOptions&, int quality) {
    context.flags |= AV_CODEC_FLAG_QSCALE;
    context.global_quality = FF_QP2LAMBDA * Scaled(quality, 1, 31);
}

void PrepareHevc(AVCodecContext&, AvOptions& options) {
    options.set("x265-params", "log-level=error");
}

void PrepareProres(AVCodecContext& context, AvOptions& options) {
    options.set("profile", HasAlpha(context.pix_fmt) ? "4444" : "hq");
    options.set("vendor", "apl0");
}

void PrepareVp9(AVCodecContext&, AvOptions& options) {
    options.set("row-mt", "1");
    options.set("deadline", "good");
    options.set("cpu-used", "4");
    options.set("auto-alt-ref", "0"); // the encoder refuses it with alpha
}

void PrepareFfv1(AVCodecContext& context, AvOptions& options) {
    context.level = 3;
    options.set("slices", "4");
    options.set("slicecrc", "1");
}

constexpr std::array<std::string_view, 5> kH264Files{".mp4", ".m4v", ".mkv", ".ts", ".m2ts"};
constexpr std::array<std::string_view, 2> kProresFiles{".mov", ".mxf"};
constexpr std::array<std::string_view, 1> kVp9Files{".webm"};
constexpr std::array<std::string_view, 1> kFfv1Files{".avi"};
constexpr std::array<std::string_view, 1> kGifFiles{".gif"};
constexpr std::array<std::string_view, 1> kRawFiles{".nut"};

const std::array kCodecs{
    VideoCodec{.name = "h264",
               .encoder = "libx264",
               .formats = {AV_PIX_FMT_YUV420P, AV_PIX_FMT_YUV420P10},
               .extensions = kH264Files,
               .needsEvenSides = true,
               .setQuality = SetH26xQuality},
    VideoCodec{.name = "hevc",
               .encoder = "libx265",
               .formats = {AV_PIX_FMT_YUV420P, AV_PIX_FMT_YUV420P10},
               .needsEvenSides = true,
               .tag = MKTAG('h', 'v', 'c', '1'), // the only HEVC tag that QuickTime shows
               .prepare = PrepareHevc,
               .setQuality = SetH26xQuality},
    VideoCodec{.name = "prores",
               .encoder = "prores_ks",
               .formats = {.opaqueDeep = AV_PIX_FMT_YUV422P10, .alphaDeep = AV_PIX_FMT_YUVA444P10},
               .extensions = kProresFiles,
               .needsQuality = false,
               .prepare = PrepareProres,
               .setQuality = SetProresQuality},
    VideoCodec{.name = "vp9",
               .encoder = "libvpx-vp9",
               .formats = {.opaque8 = AV_PIX_FMT_YUV420P,
                           .opaqueDeep = AV_PIX_FMT_YUV420P10,
                           .alpha8 = AV_PIX_FMT_YUVA420P},
               .extensions = kVp9Files,
               .prepare = PrepareVp9,
               .setQuality = SetVp9Quality},
    VideoCodec{
        .name = "ffv1",
        .encoder = "ffv1",
        .formats = {AV_PIX_FMT_0RGB32, AV_PIX_FMT_GBRP16, AV_PIX_FMT_RGB32, AV_PIX_FMT_GBRAP16},
        .extensions = kFfv1Files,
        .isLossless = true,
        .prepare = PrepareFfv1},
    VideoCodec{.name = "qtrle",
               .encoder = "qtrle",
               .formats = {.opaque8 = AV_PIX_FMT_RGB24, .alpha8 = AV_PIX_FMT_ARGB},
               .isLossless = true},
    VideoCodec{
        .name = "png",
        .encoder = "png",
        .formats = {AV_PIX_FMT_RGB24, AV_PIX_FMT_RGB48BE, AV_PIX_FMT_RGBA, AV_PIX_FMT_RGBA64BE},
        .isLossless = true},
    VideoCodec{.name = "gif",
               .encoder = "gif",
               .formats = {.alpha8 = AV_PIX_FMT_PAL8},
               .extensions = kGifFiles},
    VideoCodec{.name = "raw",
               .encoder = "rawvideo",
               .formats = {.alpha8 = AV_PIX_FMT_RGBA, .alphaDeep = AV_PIX_FMT_RGBA64LE},
               .extensions = kRawFiles,
               .isLossless = true},
};

} // namespace

AVPixelFormat VideoCodec::formatFor(CodecDemand demand) const {
    const auto pick = [&](AVPixelFormat shallow, AVPixelFormat deep) {
        const AVPixelFormat wanted = demand.deep ? deep : shallow;
        const AVPixelFormat other = demand.deep ? shallow : deep;
        return wanted != AV_PIX_FMT_NONE ? wanted : other;
    };
    const AVPixelFormat opaque = pick(formats.opaque8, formats.opaqueDeep);
    const AVPixelFormat alpha = pick(formats.alpha8, formats.alphaDeep);
    const bool takesAlpha = demand.alpha ? alpha != AV_PIX_FMT_NONE : opaque == AV_PIX_FMT_NONE;
    return takesAlpha ? alpha : opaque;
}

const VideoCodec& CodecNamed(std::string_view name) {
    const std::vector<std::string> names = CodecNames();
    const auto found = std::ranges::find(kCodecs, name, &VideoCodec::name);
    if (found == kCodecs.end()) {
        throw NoneOf(names, name);
    }
    if (found->find() == nullptr) {
        throw Error(fmt::format("asks for {}, which this build of FFmpeg can't write; it has {}",
                                name, WordList(names)));
    }
    return *found;
}

const VideoCodec* CodecForExtension(std::string_view extension) {
    const auto found = std::ranges::find_if(kCodecs, [extension](const VideoCodec& codec) {
        return std::ranges::find(codec.extensions, extension) != codec.extensions.end();
    });
    return found != kCodecs.end() ? &*found : nullptr;
}

std::vector<std::string> AllCodecNames() {
    std::vector<std::string> names;
    std::ranges::transform(kCodecs, std::back_inserter(names),
                           [](const VideoCodec& codec) { return std::string(codec.name); });
    return names;
}

std::vector<std::string> CodecNames() {
    std::vector<std::string> names;
    for (const VideoCodec& codec : kCodecs) {
        if (codec.find() != nullptr) {
            names.emplace_back(codec.name);
        }
    }
    return names;
}

std::vector<std::string> MovieExtensions() {
    std::vector<std::string> extensions;
    for (const VideoCodec& codec : kCodecs) {
        extensions.insert(extensions.end(), codec.extensions.begin(), codec.extensions.end());
    }
    return extensions;
}

} // namespace Kerovane::Host
