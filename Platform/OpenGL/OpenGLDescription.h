#pragma once

#include <optional>
#include <string>

namespace Kerovane::Platform {

/** The driver that the effect's contexts come from, in its own words. */
struct OpenGLDescription {
    std::string vendor;
    std::string renderer;
    std::string version;
    int largestSide = 0; ///< pixels of the widest or tallest picture that can be drawn
};

/**
 * Asks a context made for the purpose; nothing if none can be had. The calling thread must have no
 * context current, and has none afterwards.
 */
std::optional<OpenGLDescription> DescribeOpenGL();

} // namespace Kerovane::Platform
