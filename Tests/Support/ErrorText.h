#pragma once

#include "Host/Text/Error.h"

#include <string>

namespace Kerovane::Host {

/// What the Error says that `action` throws; empty where it throws none.
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
