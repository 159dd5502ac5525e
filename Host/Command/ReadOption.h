#pragma once

#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <string>

namespace Kerovane::Host {

/// Parses an option's text. Errors start with the option's name.
template <typename Parse>
auto ReadOption(const char* option, const std::string& text, Parse parse) {
    try {
        return parse(text);
    } catch (const Error& error) {
        throw Error(fmt::format("{} {}", option, error.what()));
    }
}

} // namespace Kerovane::Host
