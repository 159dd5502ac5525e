#pragma once

#include <cstddef>
#include <map>
#include <string>

namespace Kerovane::Host {

/// Replaces each placeholder "@NAME@" in `skeleton` by the text of that name. Leaves out the text's
/// final line break, because the line of the placeholder has one already.
inline std::string Fill(std::string skeleton, const std::map<std::string, std::string>& texts) {
    for (const auto& [name, text] : texts) {
        const std::string place = '@' + name + '@';
        const std::string lines = text.substr(0, text.size() - (text.ends_with('\n') ? 1 : 0));
        for (std::size_t at = skeleton.find(place); at != std::string::npos;
             at = skeleton.find(place, at + lines.size())) {
            skeleton.replace(at, place.size(), lines);
        }
    }
    return skeleton;
}

} // namespace Kerovane::Host
