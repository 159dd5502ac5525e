#pragma once

#include <string_view>

namespace Kerovane::Host {

/** A file of the panel's page. */
struct PageFile {
    std::string_view path; ///< after the token; "" is the page itself
    std::string_view type;
    std::string_view content;
};

/// Returns null if there is no such file.
const PageFile* FindPageFile(std::string_view path);

} // namespace Kerovane::Host
