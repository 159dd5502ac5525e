#pragma once

#include <filesystem>

namespace Kerovane::Host {

/// Two builds of one effect, with the same declaration but different internal precision.
struct EffectModules {
    std::filesystem::path bits8;  ///< for 8-bit frames and for reading the declaration
    std::filesystem::path deeper; ///< for 16-bit and float frames
};

/// Returns `plain` (Tesselune.so) and the TesseluneFloat.so in the same folder.
EffectModules WithFloatModule(std::filesystem::path plain);

} // namespace Kerovane::Host
