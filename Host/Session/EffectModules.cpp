#include "Host/Session/EffectModules.h"

#include <utility>

namespace Kerovane::Host {

EffectModules WithFloatModule(std::filesystem::path plain) {
    std::filesystem::path withFloats = plain.parent_path() / "TesseluneFloat.so";
    return {.bits8 = std::move(plain), .deeper = std::move(withFloats)};
}

} // namespace Kerovane::Host
