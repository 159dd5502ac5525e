#include "Host/Video/MovieForm.h"

namespace Kerovane::Host {

Depth MovieForm::depth() const {
    constexpr int kBitsOfLayer16 = 15; // most bits of a 16-bit layer, as its white is 32768
    return bits <= 8 ? Depth::Bits8 : bits <= kBitsOfLayer16 ? Depth::Bits16 : Depth::Float32;
}

FrameRate MovieForm::rate() const {
    constexpr int kMostTerm = 60000;
    int frames = 0;
    int seconds = 0;
    av_reduce(&frames, &seconds, frameRate.num, frameRate.den, kMostTerm);
    return frames > 0 && seconds > 0 ? FrameRate(static_cast<A_u_long>(frames), seconds)
                                     : FrameRate();
}

} // namespace Kerovane::Host
