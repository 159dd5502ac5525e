#pragma once

#include "Host/Session/World.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <cstdint>

namespace Kerovane::Fuzz {

/// The value that a careless host puts into a parameter's record.
struct RawValue {
    A_long whole = 0;   ///< for integers, popups and fixed-point numbers
    PF_FpLong real = 0; ///< for floats
};

/** A frame that a careless host requests: its layers, parameters and records. */
struct FuzzedFrame {
    /// The memory layout of a layer.
    struct Layer {
        A_long width = 0;
        A_long height = 0;
        A_long padding = 0; ///< at the end of a row, in channels

        Host::World make(Host::Depth bits) const;

        /// Returns whether the distance between rows is a whole number of pixels.
        bool isStraight() const { return padding % 4 == 0; }
    };

    explicit FuzzedFrame(FuzzedDataProvider& data);

    /// Returns the input layer filled with random bytes. As floats they include NaN and infinities.
    Host::World input() const;

    static constexpr std::size_t kValues = 16;

    Host::Depth depth;
    Layer inputLayer;
    Layer outputLayer;
    std::uint32_t noise = 0; ///< seed of the input layer's bytes
    A_long time = 0;
    A_u_long timeScale = 0;
    PF_RationalScale downsampleX{};
    PF_RationalScale downsampleY{};
    std::array<RawValue, kValues> values; ///< by the parameter's index
};

} // namespace Kerovane::Fuzz
