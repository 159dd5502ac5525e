#pragma once

#include <stdexcept>
#include <string>

namespace Kerovane::Host {

/// `text` with each control character, line ends among them, made a blank.
std::string OneLine(std::string text);

/** A failure that the user is told of. what() is one line, a sentence without its full stop. */
class Error : public std::runtime_error {
public:
    explicit Error(std::string text);
};

} // namespace Kerovane::Host
