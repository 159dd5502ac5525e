#pragma once

#include <filesystem>
#include <string>

namespace Kerovane::Host {

/**
 * Why a picture's file, whatever its name, must not be given to OpenImageIO's reader: the header
 * claims a size that the reader acts on before anyone can ask it. Empty where nothing speaks
 * against the file, and for a file that can't be read.
 */
std::string ReasonNotToOpen(const std::filesystem::path& file);

} // namespace Kerovane::Host
