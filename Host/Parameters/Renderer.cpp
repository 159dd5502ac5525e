#include "Host/Parameters/Renderer.h"

#include "Host/Text/Choice.h"

#include <cstddef>

namespace Kerovane::Host {

const std::vector<std::string>& RendererNames() {
    static const std::vector<std::string> kNames{"opengl", "software"};
    return kNames;
}

const std::string& NameOf(Renderer renderer) {
    return RendererNames()[static_cast<std::size_t>(renderer)];
}

Renderer ParseRenderer(const std::string& text) {
    return static_cast<Renderer>(PlaceAmong(RendererNames(), text));
}

} // namespace Kerovane::Host
