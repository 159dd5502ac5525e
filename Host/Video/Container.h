#pragma once

#include "Host/Video/LibAv.h"

namespace Kerovane::Host {

/// Whether files of a kind are of the family of .mov and .mp4.
bool IsLikeMov(const AVOutputFormat& container);

/// Whether they hold streams of a codec.
bool HoldsCodec(const AVOutputFormat& container, AVCodecID codec);

/// The codec that they usually have for a kind of stream; AV_CODEC_ID_NONE if they hold none.
AVCodecID UsualCodec(const AVOutputFormat& container, AVMediaType kind);

} // namespace Kerovane::Host
