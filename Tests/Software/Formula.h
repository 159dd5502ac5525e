#pragma once

#include "Software/MosaicParameters.h"
#include "Software/Sine.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

namespace Kerovane::Software {

/**
 * The mosaic's formula, evaluated for a single pixel: the reference for the renderer's pictures.
 * Colours have straight alpha. `texel` returns the picture's colour at integer coordinates.
 */
class Formula {
public:
    using Colour = std::array<float, 4>; ///< red, green, blue, alpha
    using Texel = std::function<Colour(int x, int y)>;
    struct Vec2 {
        float x, y;
    };

    Formula(const MosaicParameters& parameters, int width, int height, Texel texel)
        : p(parameters), mTexel(std::move(texel)), size{float(width), float(height)} {
        const float cell = std::trunc(float(p.size) / float(p.downsample));
        const float wide = float(p.ratio) * cell;
        normal = {wide > 0 ? wide : 1, cell > 0 ? cell : 1};
        levels = std::clamp(p.sizeLevel, 0, 24);
        const float largest = std::ldexp(1.0F, levels);
        max = {normal.x * largest, normal.y * largest};
        feather = float(p.feather) / float(p.downsample);
    }

    /// Returns the colour before it is multiplied by its alpha.
    Colour at(int x, int y) const {
        const Vec2 pixel{float(x), float(y)};
        const Vec2 reference = p.shape == Shape::Square ? search(pixel) : search(sheared(pixel));
        Colour cell = sampled(reference);
        const float alpha = isRemaining(reference) ? cell[3] : 0;
        cell[3] = alpha;
        Colour ground = p.useAlpha ? Colour{} : mTexel(x, y);
        for (std::size_t channel = 0; channel < 4; ++channel) {
            ground[channel] = ground[channel] * (1 - alpha) + cell[channel] * alpha;
        }
        return ground;
    }

private:
    static float fract(float value) {
        return std::min(value - std::floor(value), std::nextafter(1.0F, 0.0F));
    }
    static float percent(Fixed value) { return float(double(value) / 65536 / 100); }
    static float distance(Vec2 a, Vec2 b) {
        return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y));
    }
    static float random(Vec2 at, float step, int seed) {
        const float offset = 0.07F * fract(step * float(seed));
        const float angle = (at.x + offset) * 12.9898F + (at.y + offset) * 78.233F;
        return fract(float(Sine(double(angle))) * 43758.5453F);
    }
    static float projectLength(Vec2 point, Vec2 from, Vec2 to) {
        const Vec2 v{to.x - from.x, to.y - from.y};
        const Vec2 w{point.x - from.x, point.y - from.y};
        const float b = (w.x * v.x + w.y * v.y) / (v.x * v.x + v.y * v.y);
        return distance(point, {from.x + b * v.x, from.y + b * v.y});
    }

    Vec2 sheared(Vec2 pixel) const { return {pixel.x + max.x * 0.5F / max.y * pixel.y, pixel.y}; }

    static Vec2 grid(Vec2 at, Vec2 block, int level) {
        const auto scale = float(std::pow(10.0, level));
        return {std::floor(at.x / block.x) * scale, std::floor(at.y / block.y) * scale};
    }

    /// Returns the reference point of the cell that contains a position.
    Vec2 search(Vec2 at) const {
        if (levels > 0 &&
            random(grid(at, max, levels), 0.12F, p.sizeRandomSeed) < percent(p.sizeRandom)) {
            for (int level = levels; level > 0; --level) {
                const float fall = std::ldexp(1.0F, levels - level);
                const Vec2 block{max.x / fall, max.y / fall};
                if (random(grid(at, block, level), 0.12F, p.sizeRandomSeed) >= 0.5F) {
                    return reference(at, block);
                }
            }
        }
        return reference(at, normal);
    }

    Vec2 reference(Vec2 at, Vec2 block) const {
        const Vec2 offset{at.x - block.x * std::floor(at.x / block.x),
                          at.y - block.y * std::floor(at.y / block.y)};
        const Vec2 corner{at.x - offset.x, at.y - offset.y};
        if (p.shape == Shape::Square) {
            return {corner.x + block.x * 0.5F, corner.y + block.y * 0.5F};
        }
        const bool upper = offset.y == 0 || offset.x / offset.y >= block.x / block.y;
        const Vec2 inside = upper ? Vec2{corner.x + block.x * 0.675F, corner.y + block.y * 0.375F}
                                  : Vec2{corner.x + block.x * 0.32F, corner.y + block.y * 0.625F};
        return {inside.x - block.x * 0.5F / block.y * inside.y, inside.y};
    }

    Colour sampled(Vec2 at) const {
        // Beyond the edges only the edge's colour counts.
        const float x = std::clamp(at.x / size.x * size.x - 0.5F, -1.0F, size.x);
        const float y = std::clamp(at.y / size.y * size.y - 0.5F, -1.0F, size.y);
        const float shareX = x - std::floor(x);
        const float shareY = y - std::floor(y);
        const auto texel = [&](float column, float row) {
            return mTexel(int(std::clamp(column, 0.0F, size.x - 1)),
                          int(std::clamp(row, 0.0F, size.y - 1)));
        };
        const Colour a = texel(std::floor(x), std::floor(y));
        const Colour b = texel(std::floor(x) + 1, std::floor(y));
        const Colour c = texel(std::floor(x), std::floor(y) + 1);
        const Colour d = texel(std::floor(x) + 1, std::floor(y) + 1);
        Colour sum{};
        for (std::size_t i = 0; i < 4; ++i) {
            sum[i] = (1 - shareX) * (1 - shareY) * a[i] + shareX * (1 - shareY) * b[i] +
                     (1 - shareX) * shareY * c[i] + shareX * shareY * d[i];
        }
        return sum;
    }

    bool isRemaining(Vec2 at) const {
        const Vec2 centre{std::min(std::max(at.x, 1.0F), size.x - 1),
                          std::min(std::max(at.y, 1.0F), size.y - 1)};
        const float random2 = random(centre, 0.34F, p.dissolveRandomSeed);
        const bool inward = p.transition == Transition::RadialIn;
        const float progress =
            inward ? 1 - percent(p.transitionProgress) : percent(p.transitionProgress);
        const auto [place, depth] = sweep(centre);
        bool swept = false;
        if (feather >= 1) {
            const float offset = place / (depth + feather) - progress;
            const bool behind = random2 * (feather / (depth + feather)) < -offset;
            swept = behind != inward;
        } else {
            const bool ahead = progress < place / depth;
            swept = ahead == inward;
        }
        return !(random2 < percent(p.dissolve)) && !swept;
    }

    /// Returns how far `centre` is from the sweep's start, and how far the sweep goes in all. For
    /// both radial transitions, the first is the distance from the picture's centre.
    Vec2 sweep(Vec2 centre) const {
        if (p.transition != Transition::Linear) {
            const double x = double(size.x) / 2;
            const double y = double(size.y) / 2;
            const auto diagonal = float(std::sqrt(x * x + y * y));
            return {distance(centre, {size.x * 0.5F, size.y * 0.5F}), diagonal};
        }
        const auto degrees = float(double(p.direction) / 65536);
        const auto radians = float(degrees * 0.017453292519943);
        float folded = std::fmod(degrees, 360.0F);
        folded += folded < 0 ? 360.0F : 0.0F;
        const Vec2 on{float(Sine(-double(radians))), float(Cosine(double(radians)))};
        const int quadrant = std::min(int(folded / 90), 3);
        const Vec2 start{quadrant == 1 || quadrant == 2 ? size.x : 0, quadrant >= 2 ? size.y : 0};
        const bool falling = quadrant % 2 == 0;
        const float depth = projectLength({falling ? 0 : size.x, 0}, {0, 0}, on) +
                            projectLength({falling ? size.x : 0, size.y}, {0, 0}, on);
        return {projectLength(centre, start, {start.x + on.x, start.y + on.y}), depth};
    }

    MosaicParameters p;
    Texel mTexel;
    Vec2 size;
    Vec2 normal{}, max{};
    int levels = 0;
    float feather = 0;
};

} // namespace Kerovane::Software
