#include "Tests/Effect/EffectFixture.h"

#include "Host/Pictures/PixelConversion.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <stdexcept>
#include <string>
#include <type_traits>

namespace Kerovane::TestSupport {

namespace {

using Channels8 = std::array<A_u_char, 4>;

/// Stores the channels of `from` in `to` at the depth of the pixels there.
template <typename From, typename To>
void ConvertChannels(const Host::World& from, Host::World& to) {
    const auto convert = [](Host::LayerChannel<From> channel) {
        return Host::Rescale<Host::LayerChannel<To>>(channel, Host::kLayerWhite<From>,
                                                     Host::kLayerWhite<To>);
    };
    for (int y = 0; y < from.height(); ++y) {
        std::ranges::transform(from.row<From>(y), to.row<To>(y).begin(), [&](const From& pixel) {
            return To{convert(pixel.alpha), convert(pixel.red), convert(pixel.green),
                      convert(pixel.blue)};
        });
    }
}

A_u_char ToByte(double value) {
    return static_cast<A_u_char>(std::lround(std::clamp(value, 0.0, 255.0)));
}

} // namespace

EffectFixture::EffectFixture(const char* module) : mSession(module) {
    globalSetup();
    EXPECT_EQ(mSession.call(PF_Cmd_PARAMS_SETUP), PF_Err_NONE);
}

EffectFixture::~EffectFixture() {
    globalSetdown();
}

void EffectFixture::globalSetup() {
    EXPECT_EQ(mSession.call(PF_Cmd_GLOBAL_SETUP), PF_Err_NONE);
}

void EffectFixture::globalSetdown() {
    EXPECT_EQ(mSession.call(PF_Cmd_GLOBAL_SETDOWN), PF_Err_NONE);
}

void EffectFixture::set(std::string_view name, double value) {
    const Host::Parameter* parameter = Host::FindParameter(mSession.parameters(), name);
    if (parameter == nullptr) {
        throw std::invalid_argument("no parameter is called " + std::string(name));
    }
    mSession.values().set(parameter->id(), value);
}

Host::World EffectFixture::rendered(const Host::World& input) {
    Host::World output(input.depth(), input.width(), input.height());
    EXPECT_EQ(mSession.render(input, output), PF_Err_NONE);
    return output;
}

Host::World Picture8(int width, int height, const PixelAt& pixelAt) {
    Host::World picture(Host::Depth::Bits8, width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            picture.row<PF_Pixel8>(y)[static_cast<std::size_t>(x)] = pixelAt(x, y);
        }
    }
    return picture;
}

Host::World PositionPicture(int width, int height) {
    return Picture8(width, height, [](int x, int y) {
        return PF_Pixel8{255, static_cast<A_u_char>(x), static_cast<A_u_char>(y), 128};
    });
}

Host::World SmoothPicture(int width, int height, bool opaque) {
    return Picture8(width, height, [=](int x, int y) {
        const double u = x / static_cast<double>(width);
        const double v = y / static_cast<double>(height);
        const double alpha = opaque ? 1.0 : 0.25 + 0.75 * u * (1.0 - v);
        return PF_Pixel8{ToByte(255 * alpha), ToByte(255 * u), ToByte(255 * v),
                         ToByte(127 + 127 * std::sin(5 * u + 7 * v))};
    });
}

Host::World AtDepth(const Host::World& picture8, Host::Depth depth) {
    Host::World converted(depth, picture8.width(), picture8.height());
    Host::withPixelType(depth, [&]<typename Pixel>(std::type_identity<Pixel>) {
        ConvertChannels<PF_Pixel8, Pixel>(picture8, converted);
    });
    return converted;
}

Host::World At8Bits(const Host::World& picture) {
    Host::World converted(Host::Depth::Bits8, picture.width(), picture.height());
    Host::withPixelType(picture.depth(), [&]<typename Pixel>(std::type_identity<Pixel>) {
        ConvertChannels<Pixel, PF_Pixel8>(picture, converted);
    });
    return converted;
}

PF_Pixel8 PixelOf(const Host::World& picture8, int x, int y) {
    return picture8.row<PF_Pixel8>(y)[static_cast<std::size_t>(x)];
}

std::size_t RowSize(const Host::World& world) {
    return static_cast<std::size_t>(world.width()) *
           static_cast<std::size_t>(Host::BytesPerPixel(world.depth()));
}

bool SamePixels(const Host::World& a, const Host::World& b) {
    if (a.depth() != b.depth() || a.width() != b.width() || a.height() != b.height()) {
        return false;
    }
    for (int y = 0; y < a.height(); ++y) {
        if (std::memcmp(a.row<PF_Pixel8>(y).data(), b.row<PF_Pixel8>(y).data(), RowSize(a)) != 0) {
            return false;
        }
    }
    return true;
}

int LargestDifference(const Host::World& a, const Host::World& b) {
    int largest = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (std::size_t x = 0; x < static_cast<std::size_t>(a.width()); ++x) {
            Channels8 one{};
            Channels8 other{};
            std::memcpy(one.data(), &a.row<PF_Pixel8>(y)[x], one.size());
            std::memcpy(other.data(), &b.row<PF_Pixel8>(y)[x], other.size());
            for (std::size_t channel = 0; channel < one.size(); ++channel) {
                largest = std::max(largest, std::abs(one[channel] - other[channel]));
            }
        }
    }
    return largest;
}

} // namespace Kerovane::TestSupport
