#pragma once

#include <optional>
#include <string>

namespace Kerovane::Platform {

/** The OpenGL driver that the effect uses, in the driver's own words. */
struct OpenGLDescription {
    std::string vendor;
    std::string renderer;
    std::string version;
    int largestSide = 0; ///< pixels: the greatest width or height that can be drawn
};

/**
 * Queries a temporary context; returns nothing if none can be created. The calling thread must have
 * no context current, and has none afterwards.
 */
std::optional<OpenGLDescription> DescribeOpenGL();

} // namespace Kerovane::Platform
