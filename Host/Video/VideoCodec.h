#pragma once

#include "Host/Video/LibAv.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

/// A codec's pixel formats, with 8 bits or more (deep). AV_PIX_FMT_NONE if the codec lacks such a
/// format.
struct CodecFormats {
    AVPixelFormat opaque8 = AV_PIX_FMT_NONE;
    AVPixelFormat opaqueDeep = AV_PIX_FMT_NONE;
    AVPixelFormat alpha8 = AV_PIX_FMT_NONE;
    AVPixelFormat alphaDeep = AV_PIX_FMT_NONE;
};

/// What a movie requires of a pixel format.
struct CodecDemand {
    bool deep = false; ///< more than 8 bits per channel
    bool alpha = false;
};

/** A video codec as users choose it. */
struct VideoCodec {
    std::string_view name;    ///< as users write it after --codec
    const char* encoder = ""; ///< FFmpeg's name of the encoder
    CodecFormats formats;
    std::span<const std::string_view> extensions{}; ///< of the movies whose default codec it is
    bool isLossless = false;
    bool needsEvenSides = false; ///< because chroma is subsampled
    bool needsQuality = true;    ///< false: the codec chooses its own bit rate
    unsigned tag = 0;            ///< in MP4 and MOV; 0: FFmpeg's default

    /// Sets the codec's fixed options, depending on the pixel format. May be null.
    void (*prepare)(AVCodecContext&, AvOptions&) = nullptr;

    /// Sets the quality, 1 to 100. Null if the codec has no such scale.
    void (*setQuality)(AVCodecContext&, AvOptions&, int) = nullptr;

    /// Returns null if this build of FFmpeg lacks the encoder.
    const AVCodec* find() const { return avcodec_find_encoder_by_name(encoder); }

    /// Returns the format that meets the demand, or else the nearest one. Alpha takes precedence
    /// over bits.
    AVPixelFormat formatFor(CodecDemand demand) const;
};

/// Returns the codec with that name. Throws Error, which lists the available names, if there is
/// none or this build lacks its encoder.
const VideoCodec& CodecNamed(std::string_view name);

/// Returns the default codec for movies with that extension, such as ".mp4", or null if there is
/// none.
const VideoCodec* CodecForExtension(std::string_view extension);

/// Return the names of all codecs, and of those that this build has.
std::vector<std::string> AllCodecNames();
std::vector<std::string> CodecNames();

/// Returns the extensions of the movies that have a default codec.
std::vector<std::string> MovieExtensions();

} // namespace Kerovane::Host
