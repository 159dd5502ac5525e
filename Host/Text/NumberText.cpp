#include "Host/Text/NumberText.h"

#include <charconv>
#include <cmath>

namespace Kerovane::Host {

namespace {

template <typename Number>
std::optional<Number> ParseAll(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole ? std::optional(number) : std::nullopt;
}

} // namespace

std::optional<double> ParseNumber(std::string_view text) {
    const std::optional<double> number = ParseAll<double>(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<A_long> ParseWhole(std::string_view text) {
    return ParseAll<A_long>(text);
}

} // namespace Kerovane::Host
