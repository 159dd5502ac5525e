#pragma once

#include <cstdint>
#include <span>

namespace Kerovane::Frei0r {

/// Pixels from the host's order to the effect's, alpha first, and back. `to` is as long as `from`.
void AlphaFirst(std::span<const std::uint32_t> from, std::span<std::uint32_t> to);
void AlphaLast(std::span<const std::uint32_t> from, std::span<std::uint32_t> to);

} // namespace Kerovane::Frei0r
