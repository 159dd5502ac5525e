#pragma once

#include <filesystem>

namespace Kerovane::Host {

/// The modules of one effect, which declare the same and differ in how exactly they keep colour.
struct EffectModules {
    std::filesystem::path bits8;  ///< for frames of 8 bits, and to ask for the declaration
    std::filesystem::path deeper; ///< for frames of 16 bits and of floats
};

/// Tesselune.so at `plain` with TesseluneFloat.so beside it.
EffectModules WithFloatModule(std::filesystem::path plain);

} // namespace Kerovane::Host
