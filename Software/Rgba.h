#pragma once

#include "Host/Pixels/AlphaForm.h"
#include "Host/Pixels/PixelView.h"

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <utility>

namespace Kerovane::Software {

/// Red, green, blue and alpha, white at 1. Operators work channel by channel.
using Rgba = float __attribute__((vector_size(16)));

constexpr std::size_t kAlpha = 3;

/// The same in whole numbers of a channel's white.
using WholeRgba = std::int32_t __attribute__((vector_size(16)));

template <typename Channel>
struct ChannelVectorOf {
    using Type __attribute__((vector_size(4 * sizeof(Channel)))) = Channel;
};
template <typename Channel>
using ChannelVector = typename ChannelVectorOf<Channel>::Type;

/// The four channels of a pixel as they lie in memory.
template <typename Channel>
using Pixel = std::array<Channel, 4>;

template <typename Channel>
Pixel<Channel> LoadPixel(const std::byte* from) {
    Pixel<Channel> pixel;
    std::memcpy(pixel.data(), from, sizeof pixel);
    return pixel;
}

template <typename Channel>
void StorePixel(const Pixel<Channel>& pixel, std::byte* to) {
    std::memcpy(to, pixel.data(), sizeof pixel);
}

/// Rounds to whole numbers of a channel's white, from 0 to white; what is no number counts as 0.
template <std::unsigned_integral Channel>
WholeRgba Rounded(Rgba colour) {
    const Rgba positive = colour > 0 ? colour : Rgba{};
    const Rgba kept = positive < 1 ? positive : Rgba{1, 1, 1, 1};
    const auto white = static_cast<float>(Host::kWhite<Channel>);
    return __builtin_convertvector(kept * white + 0.5F, WholeRgba);
}

/// Between pixels of some form and colours with straight alpha. `Channel` is that of their depth.
template <typename Channel>
class PixelForm {
public:
    template <typename Byte>
    explicit PixelForm(const Host::BasicPixelView<Byte>& view)
        : mOrder(view.order), mAlpha(view.alpha) {}

    /// The colour of the pixel at `from`, its channels still in their order in memory.
    Rgba inMemoryOrder(const std::byte* from) const {
        Pixel<Channel> pixel = LoadPixel<Channel>(from);
        if (mAlpha == Host::Alpha::Premultiplied) {
            pixel = straight(pixel);
        }
        const auto white = static_cast<float>(Host::kWhite<Channel>);
        if constexpr (std::floating_point<Channel>) {
            return Rgba{pixel[0], pixel[1], pixel[2], pixel[3]};
        } else {
            ChannelVector<Channel> channels;
            std::memcpy(&channels, pixel.data(), sizeof channels);
            return __builtin_convertvector(__builtin_convertvector(channels, WholeRgba), Rgba) /
                   white;
        }
    }

    Rgba fromMemoryOrder(Rgba colour) const {
        return mOrder == Host::ChannelOrder::Argb
                   ? __builtin_shufflevector(colour, colour, 1, 2, 3, 0)
                   : colour;
    }

    /// Of as many colours as there are pixels.
    void makePixels(std::span<const Rgba> colours, std::span<Pixel<Channel>> pixels) const {
        for (std::size_t index = 0; index < pixels.size(); ++index) {
            pixels[index] = pixel(colours[index]);
        }
    }

    Pixel<Channel> pixel(Rgba colour) const {
        colour = inOrder(colour);
        Pixel<Channel> pixel;
        if constexpr (std::floating_point<Channel>) {
            std::memcpy(pixel.data(), &colour, sizeof pixel);
        } else {
            const auto channels =
                __builtin_convertvector(Rounded<Channel>(colour), ChannelVector<Channel>);
            std::memcpy(pixel.data(), &channels, sizeof pixel);
        }
        return mAlpha == Host::Alpha::Premultiplied ? premultiplied(pixel) : pixel;
    }

private:
    Rgba inOrder(Rgba colour) const {
        return mOrder == Host::ChannelOrder::Argb
                   ? __builtin_shufflevector(colour, colour, 3, 0, 1, 2)
                   : colour;
    }

    std::size_t alphaAt() const { return mOrder == Host::ChannelOrder::Argb ? 0 : kAlpha; }

    Pixel<Channel> straight(Pixel<Channel> pixel) const {
        const Channel alpha = pixel[alphaAt()];
        for (Channel& colour : pixel) {
            colour = Host::Straightened(colour, alpha);
        }
        pixel[alphaAt()] = alpha;
        return pixel;
    }

    Pixel<Channel> premultiplied(Pixel<Channel> pixel) const {
        const Channel alpha = pixel[alphaAt()];
        for (Channel& colour : pixel) {
            colour = Host::Premultiplied(colour, alpha);
        }
        pixel[alphaAt()] = alpha;
        return pixel;
    }

    Host::ChannelOrder mOrder;
    Host::Alpha mAlpha;
};

} // namespace Kerovane::Software
