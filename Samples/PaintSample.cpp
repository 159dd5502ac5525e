// Paints Balloons.png: balloons over a lake at sunset, with mist that fades to transparent.

#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <iostream>
#include <vector>

namespace {

constexpr int kWidth = 960;
constexpr int kHeight = 600;
constexpr double kHorizon = 0.62; // of the height
constexpr double kAspect = static_cast<double>(kWidth) / kHeight;

struct Colour {
    double r = 0;
    double g = 0;
    double b = 0;
};

Colour Mix(const Colour& from, const Colour& to, double t) {
    const double s = std::clamp(t, 0.0, 1.0);
    return {from.r + (to.r - from.r) * s, from.g + (to.g - from.g) * s,
            from.b + (to.b - from.b) * s};
}

double Smooth(double low, double high, double value) {
    const double t = std::clamp((value - low) / (high - low), 0.0, 1.0);
    return t * t * (3.0 - 2.0 * t);
}

/// A fixed random value, 0 to 1, for each point of the whole-numbered grid.
double Lattice(int x, int y) {
    auto bits =
        static_cast<std::uint32_t>(x) * 0x9e3779b1U ^ static_cast<std::uint32_t>(y) * 0x85ebca6bU;
    bits = (bits ^ bits >> 15U) * 0x2c1b3c6dU;
    bits = (bits ^ bits >> 12U) * 0x297a2d39U;
    return static_cast<double>(bits ^ bits >> 15U) / 4294967295.0;
}

double Noise(double x, double y) {
    const int column = static_cast<int>(std::floor(x));
    const int row = static_cast<int>(std::floor(y));
    const double u = Smooth(0, 1, x - column);
    const double v = Smooth(0, 1, y - row);
    const double above = std::lerp(Lattice(column, row), Lattice(column + 1, row), u);
    const double below = std::lerp(Lattice(column, row + 1), Lattice(column + 1, row + 1), u);
    return std::lerp(above, below, v);
}

/// Noise of several octaves, 0 to 1.
double Clouds(double x, double y) {
    double sum = 0;
    double weight = 0.5;
    for (int octave = 0; octave < 5; ++octave) {
        sum += weight * Noise(x, y);
        x *= 2.03;
        y *= 2.03;
        weight *= 0.5;
    }
    return sum / 0.96875;
}

Colour Sky(double x, double y) {
    constexpr Colour kZenith = {0.07, 0.11, 0.34};
    constexpr Colour kViolet = {0.45, 0.22, 0.52};
    constexpr Colour kOrange = {0.98, 0.50, 0.26};
    constexpr Colour kYellow = {1.00, 0.84, 0.48};
    const double height = y / kHorizon;
    Colour sky = Mix(kZenith, kViolet, height * 1.9);
    sky = Mix(sky, kOrange, (height - 0.45) * 2.4);
    sky = Mix(sky, kYellow, (height - 0.82) * 4.0);
    const double sun = std::hypot(x - 1.06, y - 0.49);
    sky = Mix(sky, {1.0, 0.93, 0.70}, 0.75 * std::exp(-sun * 7.0));
    const double cloud = Smooth(0.50, 0.78, Clouds(x * 2.6 + 3.0, y * 9.0));
    sky = Mix(sky, Mix({0.98, 0.60, 0.52}, {1.0, 0.90, 0.72}, height), 0.65 * cloud);
    return sun < 0.052 ? Colour{1.0, 0.97, 0.84} : sky;
}

/// Ranges of mountains, the far ones first.
struct Range {
    double base, reach, scale, offset;
    Colour top, foot;
};

constexpr std::array<Range, 4> kRanges = {{
    {0.50, 0.17, 2.1, 11.0, {0.62, 0.40, 0.60}, {0.95, 0.62, 0.48}},
    {0.56, 0.16, 3.0, 27.0, {0.40, 0.26, 0.50}, {0.72, 0.44, 0.50}},
    {0.60, 0.13, 4.2, 45.0, {0.20, 0.20, 0.40}, {0.42, 0.32, 0.46}},
    {0.635, 0.09, 7.0, 63.0, {0.05, 0.14, 0.20}, {0.10, 0.24, 0.27}},
}};

Colour Land(double x, double y, Colour behind) {
    for (const Range& range : kRanges) {
        const double ridge =
            range.base - range.reach * (Clouds(x * range.scale + range.offset, 0.5) - 0.25);
        if (y > ridge) {
            behind = Mix(range.top, range.foot, (y - ridge) / range.reach);
        }
    }
    return behind;
}

struct Balloon {
    double x, y, radius;
    std::array<Colour, 4> stripes;
};

constexpr std::array<Balloon, 4> kBalloons = {{
    {0.32,
     0.25,
     0.150,
     {{{0.91, 0.12, 0.16}, {0.99, 0.84, 0.13}, {0.05, 0.45, 0.76}, {0.97, 0.96, 0.92}}}},
    {0.78,
     0.15,
     0.085,
     {{{0.08, 0.62, 0.44}, {0.96, 0.94, 0.86}, {0.98, 0.55, 0.10}, {0.30, 0.16, 0.55}}}},
    {1.36,
     0.21,
     0.120,
     {{{0.94, 0.30, 0.56}, {0.25, 0.20, 0.60}, {0.20, 0.78, 0.86}, {0.98, 0.90, 0.30}}}},
    {0.62,
     0.43,
     0.042,
     {{{0.98, 0.75, 0.10}, {0.80, 0.10, 0.25}, {0.98, 0.75, 0.10}, {0.10, 0.20, 0.50}}}},
}};

Colour Air(double x, double y, Colour behind) {
    for (const Balloon& balloon : kBalloons) {
        const double u = (x - balloon.x) / balloon.radius;
        const double v = (y - balloon.y) / balloon.radius;
        // Round above, drawn in to the mouth below.
        const double halfWidth =
            v < 0.0 ? std::sqrt(std::max(0.0, 1.0 - v * v))
                    : std::sqrt(std::max(0.0, 1.0 - v * v * 0.55)) * (1.0 - 0.42 * v * v);
        if (v > -1.0 && v < 1.25 && std::abs(u) < halfWidth) {
            const double across = std::asin(u / halfWidth) / 3.14159265 + 0.5;
            const auto stripe = static_cast<std::size_t>(std::clamp(across * 8.0, 0.0, 7.99));
            const double light = 0.62 + 0.42 * across - 0.16 * Smooth(-0.4, 1.25, v);
            const Colour& paint = balloon.stripes[stripe % balloon.stripes.size()];
            behind = {paint.r * light, paint.g * light, paint.b * light};
        }
        const bool rope = v >= 1.25 && v < 1.55 && std::abs(std::abs(u) - 0.17) < 0.02;
        const bool basket = v >= 1.55 && v < 1.82 && std::abs(u) < 0.2;
        if (rope || basket) {
            behind = basket ? Colour{0.36, 0.20, 0.09} : Colour{0.20, 0.13, 0.10};
        }
    }
    return behind;
}

Colour World(double x, double y) {
    return Air(x, y, Land(x, y, Sky(x, y)));
}

Colour Scene(double x, double y) {
    if (y < kHorizon + 0.03) {
        return World(x, y);
    }
    // The lake mirrors the world above its shore.
    const double depth = y - (kHorizon + 0.03);
    const double ripple = 0.035 * depth * (Noise(x * 14.0, y * 90.0) - 0.5) * 6.0;
    const Colour mirrored = World(x + ripple, kHorizon + 0.03 - depth * 1.5 - ripple * 0.5);
    const double glint =
        Smooth(0.72, 0.90, Noise(x * 30.0, y * 160.0)) * std::exp(-std::abs(x - 1.06) * 5.0);
    return Mix(Mix(mirrored, {0.05, 0.10, 0.26}, 0.30 + 0.5 * depth), {1.0, 0.86, 0.62},
               0.8 * glint);
}

/// Mist over the water and at the left, where the picture fades out softly.
double Coverage(double x, double y) {
    const double drift = 0.16 * (Clouds(x * 3.0, y * 3.0 + 8.0) - 0.5);
    return (1.0 - Smooth(0.84, 1.0, y + drift)) * Smooth(0.0, 0.16, x + drift + 0.06);
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::cerr << "usage: PaintSample PICTURE\n";
        return 1;
    }
    constexpr int kSubsamples = 3;
    std::vector<std::uint8_t> pixels;
    pixels.reserve(std::size_t{4} * kWidth * kHeight);
    for (int row = 0; row < kHeight; ++row) {
        for (int column = 0; column < kWidth; ++column) {
            Colour sum;
            double coverage = 0;
            for (int sample = 0; sample < kSubsamples * kSubsamples; ++sample) {
                const double x =
                    (column + (sample % kSubsamples + 0.5) / kSubsamples) / kWidth * kAspect;
                const int line = sample / kSubsamples;
                const double y = (row + (line + 0.5) / kSubsamples) / kHeight;
                const Colour colour = Scene(x, y);
                sum = {sum.r + colour.r, sum.g + colour.g, sum.b + colour.b};
                coverage += Coverage(x, y);
            }
            for (const double channel : {sum.r, sum.g, sum.b, coverage}) {
                const double mean = channel / (kSubsamples * kSubsamples);
                pixels.push_back(
                    static_cast<std::uint8_t>(std::lround(255.0 * std::clamp(mean, 0.0, 1.0))));
            }
        }
    }

    OIIO::ImageSpec format(kWidth, kHeight, 4, OIIO::TypeDesc::UINT8);
    format.attribute("oiio:UnassociatedAlpha", 1);
    const auto output = OIIO::ImageOutput::create(argv[1]);
    if (output == nullptr || !output->open(argv[1], format) ||
        !output->write_image(OIIO::TypeDesc::UINT8, pixels.data()) || !output->close()) {
        std::cerr << "PaintSample: can't write " << argv[1] << '\n';
        return 1;
    }
    return 0;
}
