#pragma once

#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <string>

namespace Kerovane::Host {

/// Returns `parse(text)`. Puts the option's name in front of the text of an Error.
template <typename Parse>
auto ReadOption(const char* option, const std::string& text, Parse parse) {
    try {
        return parse(text);
    } catch (const Error& error) {
        throw Error(fmt::format("{} {}", option, error.what()));
    }
}

} // namespace Kerovane::Host
