#include "Tests/Effect/EffectFixture.h"

#include "Host/Pictures/PixelConversion.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <unistd.h>

namespace Kerovane::TestSupport {

namespace {

/// Stores the channels of `from` in `to`, converted to the depth of `to`.
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

std::size_t ResidentBytes() {
    std::ifstream file("/proc/self/statm");
    std::size_t total = 0;
    std::size_t resident = 0;
    file >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
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

Host::World AtDepth(const Host::World& picture, Host::Depth depth) {
    Host::World converted(depth, picture.width(), picture.height());
    Host::withPixelType(picture.depth(), [&]<typename From>(std::type_identity<From>) {
        Host::withPixelType(depth, [&]<typename To>(std::type_identity<To>) {
            ConvertChannels<From, To>(picture, converted);
        });
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
        for (int x = 0; x < a.width(); ++x) {
            const PF_Pixel8 one = PixelOf(a, x, y);
            const PF_Pixel8 other = PixelOf(b, x, y);
            largest =
                std::max({largest, std::abs(one.alpha - other.alpha), std::abs(one.red - other.red),
                          std::abs(one.green - other.green), std::abs(one.blue - other.blue)});
        }
    }
    return largest;
}

} // namespace Kerovane::TestSupport
