#pragma once

#include "Host/Pixels/PixelView.h"
#include "Host/Video/MovieForm.h"

#include <cstdint>
#include <optional>

namespace Kerovane::Host {

/**
 * Makes luma and chroma of opaque 8-bit pixels, chroma at half the size both ways: what most movies
 * hold. FFmpeg's scaler does that too, but takes more than three times as long.
 */
class Yuv420 {
public:
    /// Nothing if `color` names a matrix that isn't made of luma coefficients (ITU-T H.273, table
    /// 4).
    static std::optional<Yuv420> of(const ColorTags& color);

    /// Fills `to`, AV_PIX_FMT_YUV420P of the view's size, whose sides are even. `from` has an
    /// effect's own order; its alpha is not looked at.
    void convert(const ConstPixelView& from, AVFrame& to) const;

private:
    /// What a channel adds to luma, or takes away from chroma, of which the channel's own colour
    /// has mChroma. In 65536ths; up to 1, and their sum too.
    struct Weights {
        std::uint16_t red = 0;
        std::uint16_t green = 0;
        std::uint16_t blue = 0;
    };

    struct Row;

    void makeLuma(const Row& row, std::uint8_t* to) const;
    void makeChroma(const Row& row, std::uint8_t* toBlue, std::uint8_t* toRed) const;

    Weights mLuma;
    std::uint16_t mBlack = 0; ///< of luma, in 256ths
    Weights mFromBlue;
    Weights mFromRed;
    std::uint16_t mChroma = 0;
};

} // namespace Kerovane::Host
