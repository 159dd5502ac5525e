#pragma once

#include "Host/Panel/AccessToken.h"
#include "Host/Panel/Http.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace Kerovane::Host {

/** The path and query of an admitted request. */
struct PanelTarget {
    std::string path; ///< what follows the token: "", "page/Main.js", "still"
    std::map<std::string, std::string, std::less<>> query{};
};

/// Splits a target into path and query, and decodes percent-encoding. Returns nothing if the target
/// is malformed, too long or has too many fields.
std::optional<PanelTarget> ParseTarget(std::string_view target);

/** Admits only requests from the panel's own page. */
class Gate {
public:
    explicit Gate(const AccessToken& token) : mToken(token) {}

    /// Returns the request's target. Returns nothing if the request must not be answered: its token
    /// is wrong, a page of another origin sent it, or its Host is not a name of this machine. A
    /// wrong Host is a sign of DNS rebinding: a foreign page's name resolves to this machine.
    std::optional<PanelTarget> admit(const HttpHead& head) const;

private:
    const AccessToken& mToken;
};

} // namespace Kerovane::Host
