#pragma once

#include "Host/Session/World.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <cstdint>

namespace Kerovane::Fuzz {

/// What a careless host may put into a parameter's record.
struct RawValue {
    A_long whole = 0; ///< also the bits of a fixed-point number
    PF_FpLong real = 0;
};

/** A frame that a careless host asks for: a render's layers, its parameters, its records. */
struct FuzzedFrame {
    /// A layer's place in memory.
    struct Layer {
        A_long width = 0;
        A_long height = 0;
        A_long padding = 0; ///< of a row, in channels

        Host::World make(Host::Depth bits) const;

        /// Whether rows start at whole pixels from the first one.
        bool isStraight() const { return padding % 4 == 0; }
    };

    explicit FuzzedFrame(FuzzedDataProvider& data);

    /// The input layer, filled with noise: numbers of all kinds, where channels are such.
    Host::World input() const;

    static constexpr std::size_t kValues = 16;

    Host::Depth depth;
    Layer inputLayer;
    Layer outputLayer;
    std::uint32_t noise = 0; ///< its seed
    A_long time = 0;
    A_u_long timeScale = 0;
    PF_RationalScale downsampleX{};
    PF_RationalScale downsampleY{};
    std::array<RawValue, kValues> values; ///< by the parameter's index
};

} // namespace Kerovane::Fuzz
