#pragma once

#include <stdexcept>
#include <string>

namespace Kerovane::Host {

/// `text` with each control character, line ends among them, made a blank.
std::string OneLine(std::string text);

/**
 * A failure that the user is told of. what() is one line, a sentence without its full stop. That of
 * a function that reads a value's text begins with a verb, "takes square or triangle, not
 * 'circle'": the caller puts the option's or parameter's name in front.
 */
class Error : public std::runtime_error {
public:
    explicit Error(std::string text);
};

} // namespace Kerovane::Host
