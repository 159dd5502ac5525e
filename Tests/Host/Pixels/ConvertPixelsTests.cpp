#include "Host/Pixels/ConvertPixels.h"
#include "Host/Text/Error.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

namespace Kerovane::Host {
namespace {

constexpr std::ptrdiff_t kHeight = 3;
constexpr std::ptrdiff_t kGap = 5; ///< bytes between rows
constexpr std::byte kUntouched{0xa7};

/// A pixel's alpha, red, green and blue.
template <typename Channel>
using Argb = std::array<Channel, 4>;

/// How a picture lies in memory.
struct Form {
    ChannelOrder order;
    Alpha alpha;
    bool bottomUp;
    std::ptrdiff_t offset; ///< bytes before the first row
};

constexpr Form kForms[] = {
    {ChannelOrder::Argb, Alpha::Straight, false, 0},
    {ChannelOrder::Argb, Alpha::Premultiplied, true, 1},
    {ChannelOrder::Rgba, Alpha::Straight, true, 0},
    {ChannelOrder::Rgba, Alpha::Straight, false, 3},
    {ChannelOrder::Rgba, Alpha::Premultiplied, false, 0},
};

template <typename Channel>
struct Picture {
    Picture(Depth depth, std::ptrdiff_t width, const Form& form)
        : rowBytes(width * std::ptrdiff_t{sizeof(Argb<Channel>)} + kGap),
          bytes(static_cast<std::size_t>(form.offset + kHeight * rowBytes), kUntouched),
          view{.top = bytes.data() + form.offset + (form.bottomUp ? 2 * rowBytes : 0),
               .rowBytes = form.bottomUp ? -rowBytes : rowBytes,
               .width = width,
               .height = kHeight,
               .depth = depth,
               .order = form.order,
               .alpha = form.alpha} {}

    /// Writes the pixel at `x`, `y` and returns the pixel that was there.
    Argb<Channel> exchange(std::ptrdiff_t x, std::ptrdiff_t y, const Argb<Channel>& pixel) {
        std::byte* place = view.row(y) + x * static_cast<std::ptrdiff_t>(sizeof pixel);
        const bool alphaLast = view.order == ChannelOrder::Rgba;
        const auto& [a, r, g, b] = pixel;
        const Argb<Channel> inMemory = alphaLast ? Argb<Channel>{r, g, b, a} : pixel;
        Argb<Channel> before;
        std::memcpy(before.data(), place, sizeof before);
        std::memcpy(place, inMemory.data(), sizeof inMemory);
        const auto& [first, second, third, fourth] = before;
        return alphaLast ? Argb<Channel>{fourth, first, second, third} : before;
    }

    std::ptrdiff_t rowBytes;
    std::vector<std::byte> bytes;
    PixelView view;
};

/// Converts a pixel by the exact formula.
template <typename Channel>
Argb<Channel> Converted(Argb<Channel> pixel, Alpha from, Alpha to, double white) {
    const double alpha = pixel[0];
    for (std::size_t i = 1; i < pixel.size() && from != to; ++i) {
        if (to == Alpha::Premultiplied || alpha != 0) {
            const double factor = to == Alpha::Straight ? white : alpha;
            const double divisor = to == Alpha::Straight ? alpha : white;
            const double colour = pixel[i] * factor / divisor;
            pixel[i] = static_cast<Channel>(white == 1 ? colour
                                                       : std::min(std::floor(colour + 0.5), white));
        }
    }
    return pixel;
}

/// Compares integers exactly. Floats may differ in the last bit, because the two formulas may round
/// differently.
template <typename Channel>
bool AreSame(const Argb<Channel>& one, const Argb<Channel>& other) {
    constexpr double kTolerance = std::numeric_limits<Channel>::epsilon(); // 0 for integers
    return std::ranges::equal(
        one, other, [](double a, double b) { return std::abs(a - b) <= kTolerance * std::abs(b); });
}

/// Returns pixel `i` of a row. 65536 pixels in a row have all pairs of red and alpha at 8 bits.
template <typename Channel>
Argb<Channel> Sample(std::ptrdiff_t i, double white) {
    const auto part = [white](std::ptrdiff_t of255) {
        return static_cast<Channel>(white * static_cast<double>(of255) / 255);
    };
    return {part(i / 256 % 256), part(i % 256), part(i % 253), part(i * 7 % 256)};
}

template <typename Channel>
void CheckAllForms(Depth depth, double white) {
    // Rows end in pixels that are converted one by one, without vectors.
    for (const std::ptrdiff_t width : {0, 1, 15, 65536}) {
        for (const Form& fromForm : kForms) {
            for (const Form& toForm : kForms) {
                SCOPED_TRACE(testing::Message()
                             << static_cast<int>(depth) << " bits, " << width << " wide, forms "
                             << &fromForm - kForms << " to " << &toForm - kForms);
                Picture<Channel> from(depth, width, fromForm);
                Picture<Channel> to(depth, width, toForm);
                for (std::ptrdiff_t i = 0; i < kHeight * width; ++i) {
                    from.exchange(i % width, i / width, Sample<Channel>(i, white));
                }
                ConvertPixels(from.view, to.view);
                Argb<Channel> untouched;
                std::memset(untouched.data(), std::to_integer<int>(kUntouched), sizeof untouched);
                for (std::ptrdiff_t i = 0; i < kHeight * width; ++i) {
                    ASSERT_PRED2(
                        AreSame<Channel>, to.exchange(i % width, i / width, untouched),
                        Converted(Sample<Channel>(i, white), fromForm.alpha, toForm.alpha, white))
                        << i;
                }
                ASSERT_EQ(std::ranges::count(to.bytes, kUntouched), std::ssize(to.bytes));
            }
        }
    }
}

TEST(ConvertPixels, ConvertsEachPixelAndTouchesNothingElse) {
    CheckAllForms<std::uint8_t>(Depth::Bits8, 255);
    CheckAllForms<std::uint16_t>(Depth::Bits16, 32768);
    CheckAllForms<float>(Depth::Float32, 1);
}

TEST(ConvertPixels, RefusesPicturesOfAnotherDepthOrSize) {
    const Picture<std::uint8_t> eight(Depth::Bits8, 4, kForms[0]);
    const Picture<std::uint8_t> wider(Depth::Bits8, 5, kForms[0]);
    const Picture<std::uint16_t> sixteen(Depth::Bits16, 4, kForms[0]);
    EXPECT_THROW(ConvertPixels(eight.view, wider.view), Error);
    EXPECT_THROW(ConvertPixels(eight.view, sixteen.view), Error);
}

} // namespace
} // namespace Kerovane::Host
