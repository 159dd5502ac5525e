#include "Host/Parameters/Renderer.h"

#include "Host/Text/Error.h"
#include "Host/Text/NearestNames.h"
#include "Host/Text/WordList.h"

#include <fmt/format.h>

#include <algorithm>
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
    const std::vector<std::string>& names = RendererNames();
    const auto found = std::ranges::find(names, text);
    if (found == names.end()) {
        throw Error(
            fmt::format("takes {}, not '{}'{}", WordList(names), text, Suggestion(text, names)));
    }
    return static_cast<Renderer>(found - names.begin());
}

} // namespace Kerovane::Host
