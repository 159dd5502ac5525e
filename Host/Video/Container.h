#pragma once

#include "Host/Video/LibAv.h"

namespace Kerovane::Host {

/// Returns whether the container belongs to the MOV and MP4 family.
bool IsLikeMov(const AVOutputFormat& container);

/// Returns whether the container can hold a codec.
bool HoldsCodec(const AVOutputFormat& container, AVCodecID codec);

/// Returns the container's default codec for a kind of stream, or AV_CODEC_ID_NONE if it holds
/// none.
AVCodecID UsualCodec(const AVOutputFormat& container, AVMediaType kind);

} // namespace Kerovane::Host
