#include "Host/Text/Choice.h"

#include "Host/Text/NearestNames.h"
#include "Host/Text/WordList.h"

#include <fmt/format.h>

#include <algorithm>

namespace Kerovane::Host {

std::size_t PlaceAmong(std::span<const std::string> names, std::string_view text) {
    const auto found = std::ranges::find(names, text);
    if (found == names.end()) {
        throw NoneOf(names, text);
    }
    return static_cast<std::size_t>(found - names.begin());
}

Error NoneOf(std::span<const std::string> names, std::string_view text) {
    return Error(
        fmt::format("takes {}, not '{}'{}", WordList(names), text, Suggestion(text, names)));
}

} // namespace Kerovane::Host
