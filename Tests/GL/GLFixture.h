#pragma once

#include "Plugins/Shared/GL/AEOpenGLContext.h"
#include "Plugins/Shared/GL/GLObject.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace Kerovane::Tesselune {

using Texel = std::array<float, 4>;

/** A test with its own GL context current. */
class GLFixture : public testing::Test {
protected:
    /// Creates a texture of 32-bit floats; the height follows from the number of texels and
    /// `width`.
    static GLTexture FloatTexture(const std::vector<Texel>& texels, int width) {
        GLTexture texture = GLTexture::generated();
        gl::glBindTexture(gl::GL_TEXTURE_2D, texture.name());
        gl::glTexImage2D(gl::GL_TEXTURE_2D, 0, gl::GL_RGBA32F, width,
                         static_cast<int>(texels.size()) / width, 0, gl::GL_RGBA, gl::GL_FLOAT,
                         texels.data());
        for (const auto filter : {gl::GL_TEXTURE_MIN_FILTER, gl::GL_TEXTURE_MAG_FILTER}) {
            gl::glTexParameteri(gl::GL_TEXTURE_2D, filter, static_cast<int>(gl::GL_NEAREST));
        }
        return texture;
    }

    /// Return level 0 of a texture, or the content of the bound frame buffer.
    static std::vector<Texel> TexelsOf(unsigned int texture, int width, int height) {
        std::vector<Texel> texels(static_cast<std::size_t>(width * height));
        gl::glBindTexture(gl::GL_TEXTURE_2D, texture);
        gl::glGetTexImage(gl::GL_TEXTURE_2D, 0, gl::GL_RGBA, gl::GL_FLOAT, texels.data());
        return texels;
    }

    static std::vector<Texel> BoundTexels(int width, int height) {
        std::vector<Texel> texels(static_cast<std::size_t>(width * height));
        gl::glReadPixels(0, 0, width, height, gl::GL_RGBA, gl::GL_FLOAT, texels.data());
        return texels;
    }

    AEOpenGLContext mContext{nullptr};
};

} // namespace Kerovane::Tesselune
