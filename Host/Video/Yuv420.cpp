#include "Host/Video/Yuv420.h"

extern "C" {
#include <libavutil/csp.h>
}

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <vector>

namespace Kerovane::Host {

/// The red, green and blue of a row's pixels in separate arrays, in 256ths of a level, so that the
/// compiler vectorizes the loops.
struct Yuv420::Row {
    explicit Row(std::ptrdiff_t size) : width(size), values(static_cast<std::size_t>(3 * size)) {}

    std::uint16_t* red() { return values.data(); }
    std::uint16_t* green() { return values.data() + width; }
    std::uint16_t* blue() { return values.data() + 2 * width; }
    const std::uint16_t* red() const { return values.data(); }
    const std::uint16_t* green() const { return values.data() + width; }
    const std::uint16_t* blue() const { return values.data() + 2 * width; }

    std::ptrdiff_t width;
    std::vector<std::uint16_t> values;
};

namespace {

constexpr std::uint16_t kHighByte = 0xff00;
constexpr std::uint16_t kHalf = 128; // half a level, for rounding
/// Zero chroma, plus 127 for rounding. With 128 the greatest chroma would overflow.
constexpr std::uint16_t kGrey = (128 << 8) + 127;

std::uint16_t Weight(double part) {
    constexpr double kOne = 65536;
    constexpr double kMost = kOne - 1;
    return static_cast<std::uint16_t>(std::min(part * kOne + 0.5, kMost));
}

/// Returns the upper 16 bits of the product: `value` times a weight in units of 1/65536.
std::uint16_t Times(std::uint16_t value, std::uint16_t weight) {
    return static_cast<std::uint16_t>(std::uint32_t{value} * weight >> 16U);
}

std::uint8_t Level(int in256ths) {
    return static_cast<std::uint8_t>(static_cast<std::uint16_t>(in256ths) >> 8U);
}

void Split(const std::byte* argb, std::ptrdiff_t width, std::uint16_t* red, std::uint16_t* green,
           std::uint16_t* blue) {
    static_assert(std::endian::native == std::endian::little);
    for (std::ptrdiff_t x = 0; x < width; ++x) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, argb + x * std::ptrdiff_t{sizeof pixel}, sizeof pixel);
        red[x] = static_cast<std::uint16_t>(pixel & kHighByte);
        green[x] = static_cast<std::uint16_t>(pixel >> 8U & kHighByte);
        blue[x] = static_cast<std::uint16_t>(pixel >> 16U & kHighByte);
    }
}

/// Averages blocks of 2 by 2 pixels from two rows.
void Halve(const std::uint16_t* upper, const std::uint16_t* lower, std::ptrdiff_t width,
           std::uint16_t* half) {
    for (std::ptrdiff_t x = 0; x < width; ++x) {
        half[x] = static_cast<std::uint16_t>((upper[2 * x] >> 2U) + (upper[2 * x + 1] >> 2U) +
                                             (lower[2 * x] >> 2U) + (lower[2 * x + 1] >> 2U));
    }
}

} // namespace

std::optional<Yuv420> Yuv420::of(const ColorTags& color) {
    const AVColorSpace matrix =
        color.matrix == AVCOL_SPC_UNSPECIFIED ? AVCOL_SPC_SMPTE170M : color.matrix;
    const AVLumaCoefficients* luma = av_csp_luma_coeffs_from_avcsp(matrix);
    if (luma == nullptr || matrix == AVCOL_SPC_RGB || matrix == AVCOL_SPC_YCGCO) {
        return std::nullopt;
    }
    const double red = av_q2d(luma->cr);
    const double green = av_q2d(luma->cg);
    const double blue = av_q2d(luma->cb);
    const bool isFull = color.range == AVCOL_RANGE_JPEG;
    const double white = isFull ? 1 : 219.0 / 255;
    const double most = isFull ? 0.5 : 112.0 / 255; // greatest chroma in either direction
    const double toBlue = most / (1 - blue);
    const double toRed = most / (1 - red);
    constexpr std::uint16_t kBlack = 16 << 8;
    Yuv420 made;
    made.mLuma = {Weight(red * white), Weight(green * white), Weight(blue * white)};
    made.mBlack = isFull ? 0 : kBlack;
    made.mFromBlue = {.red = Weight(red * toBlue), .green = Weight(green * toBlue)};
    made.mFromRed = {.green = Weight(green * toRed), .blue = Weight(blue * toRed)};
    made.mChroma = Weight(most);
    return made;
}

void Yuv420::makeLuma(const Row& row, std::uint8_t* __restrict to) const {
    const auto [red, green, blue] = mLuma;
    const auto offset = static_cast<std::uint16_t>(mBlack + kHalf);
    const std::uint16_t* reds = row.red();
    const std::uint16_t* greens = row.green();
    const std::uint16_t* blues = row.blue();
    for (std::ptrdiff_t x = 0; x < row.width; ++x) {
        to[x] =
            Level(Times(reds[x], red) + Times(greens[x], green) + Times(blues[x], blue) + offset);
    }
}

void Yuv420::makeChroma(const Row& row, std::uint8_t* __restrict toBlue,
                        std::uint8_t* __restrict toRed) const {
    const Weights fromBlue = mFromBlue;
    const Weights fromRed = mFromRed;
    const std::uint16_t chroma = mChroma;
    const std::uint16_t* reds = row.red();
    const std::uint16_t* greens = row.green();
    const std::uint16_t* blues = row.blue();
    for (std::ptrdiff_t x = 0; x < row.width; ++x) {
        toBlue[x] = Level(kGrey + Times(blues[x], chroma) - Times(reds[x], fromBlue.red) -
                          Times(greens[x], fromBlue.green));
        toRed[x] = Level(kGrey + Times(reds[x], chroma) - Times(greens[x], fromRed.green) -
                         Times(blues[x], fromRed.blue));
    }
}

void Yuv420::convert(const ConstPixelView& from, AVFrame& to) const {
    Row upper(from.width);
    Row lower(from.width);
    Row half(from.width / 2);
    for (std::ptrdiff_t y = 0; y < from.height; y += 2) {
        Split(from.row(y), from.width, upper.red(), upper.green(), upper.blue());
        Split(from.row(y + 1), from.width, lower.red(), lower.green(), lower.blue());
        makeLuma(upper, to.data[0] + y * to.linesize[0]);
        makeLuma(lower, to.data[0] + (y + 1) * to.linesize[0]);
        Halve(upper.red(), lower.red(), half.width, half.red());
        Halve(upper.green(), lower.green(), half.width, half.green());
        Halve(upper.blue(), lower.blue(), half.width, half.blue());
        makeChroma(half, to.data[1] + y / 2 * to.linesize[1], to.data[2] + y / 2 * to.linesize[2]);
    }
}

} // namespace Kerovane::Host
