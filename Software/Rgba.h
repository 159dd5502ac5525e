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
using Rgba = Host::Four<float>;

constexpr std::size_t kAlpha = 3;

/// Red, green, blue and alpha as integers, white at Host::kWhite of the channel type.
using WholeRgba = Host::Four<std::int32_t>;

/// The four channels of a pixel in memory order.
template <typename Channel>
using Pixel = std::array<Channel, 4>;

template <typename Channel>
void StorePixel(const Pixel<Channel>& pixel, std::byte* to) {
    std::memcpy(to, pixel.data(), sizeof pixel);
}

/// Rounds to integers from 0 to a channel's white. NaN counts as 0.
template <std::unsigned_integral Channel>
WholeRgba Rounded(Rgba colour) {
    const Rgba positive = colour > 0 ? colour : Rgba{};
    const Rgba kept = positive < 1 ? positive : Rgba{1, 1, 1, 1};
    const auto white = static_cast<float>(Host::kWhite<Channel>);
    return __builtin_convertvector(kept * white + 0.5F, WholeRgba);
}

/// Converts between pixels of some form and colours with straight alpha. `Channel` is the channel
/// type of their depth.
template <typename Channel>
class PixelForm {
public:
    template <typename Byte>
    explicit PixelForm(const Host::BasicPixelView<Byte>& view)
        : mOrder(view.order), mAlpha(view.alpha) {}

    /// Reads the pixel at `from` as a colour with its channels still in memory order.
    Rgba inMemoryOrder(const std::byte* from) const {
        Host::Four<Channel> channels;
        std::memcpy(&channels, from, sizeof channels);
        if (mAlpha == Host::Alpha::Premultiplied) {
            channels = Host::InForm<Host::Alpha::Straight, Channel>(channels, mOrder);
        }
        if constexpr (std::floating_point<Channel>) {
            return channels;
        } else {
            return __builtin_convertvector(__builtin_convertvector(channels, WholeRgba), Rgba) /
                   static_cast<float>(Host::kWhite<Channel>);
        }
    }

    Rgba fromMemoryOrder(Rgba colour) const {
        return mOrder == Host::ChannelOrder::Argb
                   ? __builtin_shufflevector(colour, colour, 1, 2, 3, 0)
                   : colour;
    }

    /// Converts colours to pixels. Both spans must have the same size.
    void makePixels(std::span<const Rgba> colours, std::span<Pixel<Channel>> pixels) const {
        for (std::size_t index = 0; index < pixels.size(); ++index) {
            pixels[index] = pixel(colours[index]);
        }
    }

    Pixel<Channel> pixel(Rgba colour) const {
        Host::Four<Channel> channels = channelsOf(inOrder(colour));
        if (mAlpha == Host::Alpha::Premultiplied) {
            channels = Host::InForm<Host::Alpha::Premultiplied, Channel>(channels, mOrder);
        }
        Pixel<Channel> pixel;
        std::memcpy(pixel.data(), &channels, sizeof pixel);
        return pixel;
    }

private:
    Rgba inOrder(Rgba colour) const {
        return mOrder == Host::ChannelOrder::Argb
                   ? __builtin_shufflevector(colour, colour, 3, 0, 1, 2)
                   : colour;
    }

    static Host::Four<Channel> channelsOf(Rgba colour) {
        if constexpr (std::floating_point<Channel>) {
            return colour;
        } else {
            return __builtin_convertvector(Rounded<Channel>(colour), Host::Four<Channel>);
        }
    }

    Host::ChannelOrder mOrder;
    Host::Alpha mAlpha;
};

} // namespace Kerovane::Software
