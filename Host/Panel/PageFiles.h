#pragma once

#include <string_view>

namespace Kerovane::Host {

/** A file that the panel's page consists of. */
struct PageFile {
    std::string_view path; ///< behind the token; "" is the page itself
    std::string_view type;
    std::string_view content;
};

/// Null if there is none.
const PageFile* FindPageFile(std::string_view path);

} // namespace Kerovane::Host
