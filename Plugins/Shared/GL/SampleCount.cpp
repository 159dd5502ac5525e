#include "GL/SampleCount.h"

#include <glbinding/gl/gl.h>

#include <algorithm>

namespace Kerovane::Tesselune {

namespace {

constexpr int kSamples = 8;

} // namespace

int ColorSampleCount() {
    int limit = 0;
    gl::glGetIntegerv(gl::GL_MAX_SAMPLES, &limit);
    return std::clamp(limit, 0, kSamples);
}

} // namespace Kerovane::Tesselune
