#pragma once

#include "Host/Session/World.h"

#include <array>
#include <string>

namespace Kerovane::Benchmarks {

inline constexpr std::array kDepths = {Host::Depth::Bits8, Host::Depth::Bits16,
                                       Host::Depth::Float32};

/// Returns the depth's part of a benchmark's name: "16 bits".
inline std::string BitsName(Host::Depth depth) {
    return std::to_string(static_cast<int>(depth)) + " bits";
}

/// Returns "squares" for shape type 0, "triangles" for 1.
inline std::string ShapeName(int shapeType) {
    return shapeType == 0 ? "squares" : "triangles";
}

} // namespace Kerovane::Benchmarks
