#pragma once

#include "Host/Text/Error.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <type_traits>

namespace Kerovane::Fuzz {

/// Aborts the process if `holds` is false, which libFuzzer reports as a finding.
inline void Expect(bool holds, const char* promise) {
    if (!holds) {
        static_cast<void>(std::fprintf(stderr, "broken promise: %s\n", promise));
        std::abort();
    }
}

/// Returns the result of `read`; nothing if it throws the host's Error, which must be one line. Any
/// other exception propagates and aborts the process.
template <typename Read>
std::optional<std::invoke_result_t<Read>> ReadOrError(Read read) {
    try {
        return read();
    } catch (const Host::Error& error) {
        const std::string_view text = error.what();
        Expect(!text.empty(), "an error says something");
        Expect(std::ranges::none_of(text, [](unsigned char byte) { return byte < ' '; }),
               "an error is one line");
        return std::nullopt;
    }
}

} // namespace Kerovane::Fuzz
