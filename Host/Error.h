#pragma once

#include <stdexcept>

namespace Kerovane::Host {

/** A failure that the user is told of. what() is one line, a sentence without its full stop. */
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace Kerovane::Host
