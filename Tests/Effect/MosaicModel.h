#pragma once

#include "Tests/Effect/EffectFixture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace Kerovane::TestSupport {

/// A position or a size in pixels.
struct Point {
    double x = 0;
    double y = 0;
};

enum class Shape { Square = 1, Triangle = 2 };

/** A cell computed by plain geometry. */
struct Cell {
    Point reference;       ///< where the cell takes its colour; may be outside the picture
    double borderDistance; ///< distance of the pixel, in cells, from the nearest border that
                           ///< rounding may move
};

inline double Folded(double value, double period) {
    return value - std::floor(value / period) * period;
}

inline double BorderDistance(double offset) {
    return std::min(offset, 1.0 - offset);
}

/// Returns the cell of a pixel, among cells of one size.
inline Cell CellOf(Shape shape, int x, int y, const Point& size) {
    const double shear = shape == Shape::Triangle ? size.x * 0.5 / size.y : 0.0;
    const Point sheared = {x + shear * y, static_cast<double>(y)};
    const Point offset = {Folded(sheared.x, size.x) / size.x, Folded(sheared.y, size.y) / size.y};
    Point reference = {0.5, 0.5};
    // Leaves out horizontal borders: rounding cannot move them, because cell heights are whole
    // numbers.
    double border = BorderDistance(offset.x);
    if (shape == Shape::Triangle) {
        const bool smallYSide = offset.y == 0 || offset.x >= offset.y;
        reference = smallYSide ? Point{0.675, 0.375} : Point{0.32, 0.625};
        if (offset.y != 0) {
            border = std::min(border, std::abs(offset.x - offset.y));
        }
    }
    const Point inSheared = {sheared.x + (reference.x - offset.x) * size.x,
                             sheared.y + (reference.y - offset.y) * size.y};
    return {{inSheared.x - shear * inSheared.y, inSheared.y}, border};
}

/// Returns the reference point as used for distances and random values: clamped to 1 to size - 1.
inline Point Restrained(const Point& point, const Point& picture) {
    return {std::clamp(point.x, 1.0, picture.x - 1.0), std::clamp(point.y, 1.0, picture.y - 1.0)};
}

/// Returns the position of `point` on a linear sweep along `degrees`, 0 to 1 over the picture.
inline double LinearPlace(const Point& point, const Point& picture, double degrees) {
    const double angle = degrees * std::numbers::pi / 180.0;
    const Point along = {std::cos(angle), std::sin(angle)};
    const double depth = std::abs(along.x) * picture.x + std::abs(along.y) * picture.y;
    const Point start = {along.x < 0 ? picture.x : 0.0, along.y < 0 ? picture.y : 0.0};
    return ((point.x - start.x) * along.x + (point.y - start.y) * along.y) / depth;
}

/// Returns the position of `point` on a radial sweep: 0 at the picture's centre, 1 at its corners.
inline double RadialPlace(const Point& point, const Point& picture) {
    return std::hypot(point.x - picture.x / 2, point.y - picture.y / 2) /
           std::hypot(picture.x / 2, picture.y / 2);
}

/// Returns the red and green of a PositionPicture at a position, in levels.
inline Point PositionColor(const Point& location, const Point& picture) {
    return {std::clamp(location.x - 0.5, 0.0, picture.x - 1.0),
            std::clamp(location.y - 0.5, 0.0, picture.y - 1.0)};
}

} // namespace Kerovane::TestSupport
