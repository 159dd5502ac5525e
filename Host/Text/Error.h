#pragma once

#include <stdexcept>
#include <string>

namespace Kerovane::Host {

/// Returns `text` with each control character, line breaks included, replaced by a space.
std::string OneLine(std::string text);

/**
 * A failure that is reported to the user. what() is one line: a sentence without a full stop.
 *
 * A function that parses a value throws an Error whose text begins with a verb, "takes square or
 * triangle, not 'circle'": the caller puts the name of the option or parameter in front.
 */
class Error : public std::runtime_error {
public:
    explicit Error(std::string text);
};

} // namespace Kerovane::Host
