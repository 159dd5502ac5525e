#pragma once

#include "Host/Panel/AccessToken.h"
#include "Host/Panel/Http.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace Kerovane::Host {

/** What a request asks for, once it was let in. */
struct PanelTarget {
    std::string path; ///< behind the token: "", "page/Main.js", "still"
    std::map<std::string, std::string, std::less<>> query{};
};

/// Splits path and query, and decodes what is written with percent signs. Nothing if that is
/// malformed, or holds more than a page of this program ever sends.
std::optional<PanelTarget> ParseTarget(std::string_view target);

/** Lets those requests in that come from the panel's own page. */
class Gate {
public:
    explicit Gate(const AccessToken& token) : mToken(token) {}

    /// Nothing if the request is not to be answered: its token is wrong, it was sent to another
    /// name than this machine's own, which a foreign page may have pointed here, or by a foreign
    /// page.
    std::optional<PanelTarget> admit(const HttpHead& head) const;

private:
    const AccessToken& mToken;
};

} // namespace Kerovane::Host
