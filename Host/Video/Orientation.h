#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace Kerovane::Host {

/**
 * A rotation by a multiple of 90 degrees, with or without mirroring, from a stored picture to the
 * upright one. Pixel (x, y) moves to (xx * x + xy * y, yx * x + yy * y) plus a translation. Each
 * coefficient is -1, 0 or 1.
 */
struct Orientation {
    int xx = 1;
    int xy = 0;
    int yx = 0;
    int yy = 1;

    /// Reads FFmpeg's display matrix. Returns nothing if its angle is not a multiple of 90 degrees.
    static std::optional<Orientation> of(std::span<const std::int32_t, 9> matrix);

    bool swapsSides() const { return xx == 0; }
    bool isUpright() const { return xx == 1 && yy == 1; }
};

inline std::optional<Orientation> Orientation::of(std::span<const std::int32_t, 9> matrix) {
    const auto sign = [](std::int32_t number) { return (number > 0) - (number < 0); };
    const Orientation found{sign(matrix[0]), sign(matrix[3]), sign(matrix[1]), sign(matrix[4])};
    const bool straight = found.xx != 0 && found.yy != 0 && found.xy == 0 && found.yx == 0;
    const bool turned = found.xx == 0 && found.yy == 0 && found.xy != 0 && found.yx != 0;
    return straight || turned ? std::optional(found) : std::nullopt;
}

} // namespace Kerovane::Host
