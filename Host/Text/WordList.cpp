#include "Host/Text/WordList.h"

#include <fmt/format.h>

namespace Kerovane::Host {

std::string WordList(std::span<const std::string> words) {
    if (words.size() < 2) {
        return words.empty() ? "" : words.front();
    }
    return fmt::format("{} or {}", fmt::join(words.first(words.size() - 1), ", "), words.back());
}

} // namespace Kerovane::Host
