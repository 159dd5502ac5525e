#pragma once

namespace Kerovane::Tesselune {

/// By a factor of 14 digits, not the nearest double: a settled figure of the library.
constexpr double toRadians(double degrees) noexcept {
    return degrees * 0.017453292519943;
}

constexpr double toDegrees(double radians) noexcept {
    return radians * 57.29577951308232;
}

} // namespace Kerovane::Tesselune
