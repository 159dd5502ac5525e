#pragma once

#include "Host/Text/Error.h"

#include <string>

namespace Kerovane::Host {

/// Returns the message of the Error that `action` throws; empty if it throws none.
template <typename Action>
std::string ErrorOf(Action action) {
    try {
        action();
        return "";
    } catch (const Error& error) {
        return error.what();
    }
}

} // namespace Kerovane::Host
