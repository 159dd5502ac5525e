#pragma once

#include <string>
#include <string_view>

namespace Kerovane::Host {

/** The secret in the panel's address, which only those who were given the address know. */
class AccessToken {
public:
    /// Takes 160 random bits from the system. Throws Error if the system gives none.
    AccessToken();

    /// The secret as hexadecimal digits.
    const std::string& text() const { return mText; }

    /// Compares in constant time, so that the duration does not reveal how much of `text` is right.
    bool is(std::string_view text) const;

private:
    std::string mText;
};

} // namespace Kerovane::Host
