#pragma once

#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <string>

namespace Kerovane::Host {

/// What `parse` makes of an option's text; its errors name the option.
template <typename Parse>
auto ReadOption(const char* option, const std::string& text, Parse parse) {
    try {
        return parse(text);
    } catch (const Error& error) {
        throw Error(fmt::format("{} {}", option, error.what()));
    }
}

} // namespace Kerovane::Host
