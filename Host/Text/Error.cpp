#include "Host/Text/Error.h"

#include <algorithm>
#include <utility>

namespace Kerovane::Host {

std::string OneLine(std::string text) {
    std::ranges::replace_if(
        text, [](unsigned char byte) { return byte < ' '; }, ' ');
    return text;
}

Error::Error(std::string text) : std::runtime_error(OneLine(std::move(text))) {}

} // namespace Kerovane::Host
