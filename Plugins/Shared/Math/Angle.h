#pragma once

namespace Kerovane::Tesselune {

/// Uses a factor of 14 digits, not the double nearest to pi / 180: results depend on it.
constexpr double toRadians(double degrees) noexcept {
    return degrees * 0.017453292519943;
}

constexpr double toDegrees(double radians) noexcept {
    return radians * 57.29577951308232;
}

} // namespace Kerovane::Tesselune
