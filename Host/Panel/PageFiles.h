#pragma once

#include <string_view>

namespace Kerovane::Host {

/** A file of the panel's page. */
struct PageFile {
    std::string_view path; ///< what follows the token in the address; empty: the page itself
    std::string_view type;
    std::string_view content;
};

/// Returns the file at `path`, or null if there is none.
const PageFile* FindPageFile(std::string_view path);

} // namespace Kerovane::Host
