#include "Host/Video/ScalerPool.h"

#include <fmt/format.h>

#include <algorithm>

namespace Kerovane::Host {

namespace {

const AVPixFmtDescriptor& Descriptor(AVPixelFormat format) {
    const AVPixFmtDescriptor* descriptor = av_pix_fmt_desc_get(format);
    if (descriptor == nullptr) {
        throw Error("the movie's pixels have no known format");
    }
    return *descriptor;
}

/// Selects FFmpeg's fast conversions for 8 bits, as its own tools do, and exact ones for deeper
/// formats.
int FlagsFor(AVPixelFormat from, AVPixelFormat to) {
    constexpr int kExact = SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT | SWS_FULL_CHR_H_INP;
    return std::max(BitsOf(from), BitsOf(to)) > 8 ? SWS_BICUBIC | kExact : SWS_BICUBIC;
}

/// Returns the coefficients of `matrix`. RGB and an unspecified matrix get FFmpeg's default.
const int* Coefficients(AVColorSpace matrix) {
    return sws_getCoefficients(matrix == AVCOL_SPC_RGB ? int{SWS_CS_DEFAULT} : int{matrix});
}

} // namespace

PixelCoding Plain(PixelCoding coding) {
    const auto full = [&coding](AVPixelFormat format) {
        coding.format = format;
        coding.color.range = AVCOL_RANGE_JPEG;
    };
    switch (coding.format) {
    case AV_PIX_FMT_YUVJ420P:
        full(AV_PIX_FMT_YUV420P);
        break;
    case AV_PIX_FMT_YUVJ422P:
        full(AV_PIX_FMT_YUV422P);
        break;
    case AV_PIX_FMT_YUVJ444P:
        full(AV_PIX_FMT_YUV444P);
        break;
    case AV_PIX_FMT_YUVJ440P:
        full(AV_PIX_FMT_YUV440P);
        break;
    case AV_PIX_FMT_YUVJ411P:
        full(AV_PIX_FMT_YUV411P);
        break;
    default:
        break;
    }
    return coding;
}

bool HaveSameMeaning(const PixelCoding& one, const PixelCoding& other) {
    const PixelCoding plainOne = Plain(one);
    const PixelCoding plainOther = Plain(other);
    const auto isFull = [](const PixelCoding& coding) {
        return coding.color.range == AVCOL_RANGE_JPEG;
    };
    return plainOne.format == plainOther.format &&
           plainOne.color.matrix == plainOther.color.matrix &&
           isFull(plainOne) == isFull(plainOther);
}

void SetTags(AVFrame& frame, const ColorTags& color) {
    frame.colorspace = color.matrix;
    frame.color_range = color.range;
    frame.color_primaries = color.primaries;
    frame.color_trc = color.transfer;
    frame.chroma_location = color.chroma;
}

ScalerPool::ScalerPool(int width, int height, const PixelCoding& from, const PixelCoding& to)
    : mWidth(width), mHeight(height), mFrom(Plain(from)), mTo(Plain(to)) {
    mFree.push_back(make());
}

void ScalerPool::convert(const AVFrame& from, AVFrame& to) {
    AvScaler scaler = borrow();
    CheckAv(sws_scale(scaler.get(), from.data, from.linesize, 0, mHeight, to.data, to.linesize),
            "pixels can't be converted");
    const std::lock_guard lock(mMutex);
    mFree.push_back(std::move(scaler));
}

AvScaler ScalerPool::make() const {
    AvScaler scaler(sws_getContext(mWidth, mHeight, mFrom.format, mWidth, mHeight, mTo.format,
                                   FlagsFor(mFrom.format, mTo.format), nullptr, nullptr, nullptr));
    if (scaler == nullptr) {
        throw Error(fmt::format("pixels of {} can't be converted to {}",
                                Descriptor(mFrom.format).name, Descriptor(mTo.format).name));
    }
    constexpr int kOne = 1 << 16;
    const auto isFull = [](const PixelCoding& coding) {
        return static_cast<int>(coding.color.range == AVCOL_RANGE_JPEG);
    };
    sws_setColorspaceDetails(scaler.get(), Coefficients(mFrom.color.matrix), isFull(mFrom),
                             Coefficients(mTo.color.matrix), isFull(mTo), 0, kOne, kOne);
    return scaler;
}

AvScaler ScalerPool::borrow() {
    {
        const std::lock_guard lock(mMutex);
        if (!mFree.empty()) {
            AvScaler scaler = std::move(mFree.back());
            mFree.pop_back();
            return scaler;
        }
    }
    return make();
}

AvFrame NewFrame(AVPixelFormat format, int width, int height) {
    AvFrame frame = NewFrame();
    frame->format = format;
    frame->width = width;
    frame->height = height;
    CheckAv(av_frame_get_buffer(frame.get(), 0), "no memory for a frame");
    return frame;
}

int BitsOf(AVPixelFormat format) {
    const AVPixFmtDescriptor& descriptor = Descriptor(format);
    int bits = 0;
    for (int i = 0; i < descriptor.nb_components; ++i) {
        bits = std::max(bits, descriptor.comp[i].depth);
    }
    return bits;
}

bool HasAlpha(AVPixelFormat format) {
    return (Descriptor(format).flags & AV_PIX_FMT_FLAG_ALPHA) != 0;
}

bool IsRgb(AVPixelFormat format) {
    return (Descriptor(format).flags & (AV_PIX_FMT_FLAG_RGB | AV_PIX_FMT_FLAG_PAL)) != 0;
}

} // namespace Kerovane::Host
