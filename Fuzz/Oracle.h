#pragma once

#include "Host/Text/Error.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <type_traits>

namespace Kerovane::Fuzz {

/// Ends the process if a promise doesn't hold, which is how a target reports a finding.
inline void Expect(bool holds, const char* promise) {
    if (!holds) {
        static_cast<void>(std::fprintf(stderr, "broken promise: %s\n", promise));
        std::abort();
    }
}

/// What `read` gives, or nothing if it throws the host's Error, which has to be of one line. Any
/// other exception passes through, and ends the process too.
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
