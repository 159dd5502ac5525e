#pragma once

#include "Host/Video/LibAv.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// The pixel formats that a codec is given. AV_PIX_FMT_NONE if there is none of the kind.
struct CodecFormats {
    AVPixelFormat opaque8 = AV_PIX_FMT_NONE;
    AVPixelFormat opaqueDeep = AV_PIX_FMT_NONE;
    AVPixelFormat alpha8 = AV_PIX_FMT_NONE;
    AVPixelFormat alphaDeep = AV_PIX_FMT_NONE;
};

/// Which of them a movie needs.
struct CodecDemand {
    bool deep = false;  ///< more than 8 bits
    bool alpha = false; ///< holes
};

/** A way to encode moving pictures, as users name it. */
struct VideoCodec {
    std::string_view name;    ///< as --codec takes it
    const char* encoder = ""; ///< FFmpeg's name
    CodecFormats formats;
    std::span<const std::string_view> extensions{}; ///< whose movies have it unless told otherwise
    bool isLossless = false;
    bool needsEvenSides = false; ///< for colour at half the size
    bool needsQuality = true;    ///< else the codec has a rate of its own
    unsigned tag = 0;            ///< of its own in .mp4 and .mov; 0: as FFmpeg has it

    /// Sets what the codec always has, by pixel format.
    void (*prepare)(AVCodecContext&, AvOptions&) = nullptr;

    /// Sets the quality, 1 to 100; null if it has no scale.
    void (*setQuality)(AVCodecContext&, AvOptions&, int) = nullptr;

    /// Null if this build of FFmpeg lacks it.
    const AVCodec* find() const { return avcodec_find_encoder_by_name(encoder); }

    /// The format for a demand, else the nearest that the codec has: holes come before bits.
    AVPixelFormat formatFor(CodecDemand demand) const;
};

/// The codec of that name. Throws Error, which names those that there are, if there is none or this
/// build lacks it.
const VideoCodec& CodecNamed(std::string_view name);

/// The codec that movies with that extension, such as ".mp4", have unless told otherwise; null if
/// none has.
const VideoCodec* CodecForExtension(std::string_view extension);

/// Names of all codecs, and of those that this build has.
std::vector<std::string> AllCodecNames();
std::vector<std::string> CodecNames();

/// Extensions of the movies that this build writes.
std::vector<std::string> MovieExtensions();

} // namespace Kerovane::Host
