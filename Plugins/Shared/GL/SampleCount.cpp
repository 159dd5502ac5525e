#include "Plugins/Shared/GL/SampleCount.h"

#include <glbinding/ContextInfo.h>
#include <glbinding/gl/extension.h>
#include <glbinding/gl/gl.h>

#include <algorithm>
#include <string_view>

using namespace gl;

namespace Kerovane::Tesselune {

namespace {

constexpr int kSamples = 8;

bool IsSoftwareRasteriser() {
    const auto* const text = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    const std::string_view renderer = text != nullptr ? text : "";
    return renderer.starts_with("llvmpipe") || renderer.starts_with("softpipe");
}

} // namespace

int ColorSampleCount(GLenum format) {
    if (IsSoftwareRasteriser()) {
        return 0; // samples cost memory traffic, and a full-screen quad has no edge to smooth
    }
    int limit = 0;
    glGetIntegerv(GL_MAX_SAMPLES, &limit);
    if (glbinding::ContextInfo::supported({GLextension::GL_ARB_internalformat_query})) {
        glGetInternalformativ(GL_RENDERBUFFER, format, GL_SAMPLES, 1,
                              &limit); // the highest count comes first
    }
    return std::clamp(limit, 0, kSamples);
}

} // namespace Kerovane::Tesselune
