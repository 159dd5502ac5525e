#pragma once

#include <string>
#include <string_view>

namespace Kerovane::Host {

/** A secret that whoever was told the panel's address has. */
class AccessToken {
public:
    /// 160 random bits of the system's. Throws Error if it gives none.
    AccessToken();

    /// Letters and digits.
    const std::string& text() const { return mText; }

    /// Compares in a time that doesn't tell how much of `text` is right.
    bool is(std::string_view text) const;

private:
    std::string mText;
};

} // namespace Kerovane::Host
