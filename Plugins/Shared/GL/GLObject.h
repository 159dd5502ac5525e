#pragma once

#include <glbinding/gl/gl.h>

#include <utility>

namespace Kerovane::Tesselune {

/**
 * Owns one GL name, 0 while there is none, and deletes it at its end. The context in which the
 * object lives, or for shared kinds one of its share group, must be current then.
 */
template <auto Generate, auto Delete>
class GLObject {
public:
    GLObject() = default;
    explicit GLObject(unsigned int name) : mName(name) {}
    ~GLObject() { reset(); }
    GLObject(GLObject&& other) noexcept : mName(other.release()) {}
    GLObject& operator=(GLObject&& other) noexcept {
        std::swap(mName, other.mName);
        return *this;
    }

    static GLObject generated() {
        GLObject object;
        Generate(1, &object.mName);
        return object;
    }

    unsigned int name() const { return mName; }
    explicit operator bool() const { return mName != 0; }

    void reset() {
        if (mName != 0) {
            Delete(1, &mName);
            mName = 0;
        }
    }

    /// Gives the name up without deleting the object.
    unsigned int release() noexcept { return std::exchange(mName, 0U); }

private:
    unsigned int mName = 0;
};

using GLBuffer = GLObject<gl::glGenBuffers, gl::glDeleteBuffers>;
using GLRenderbuffer = GLObject<gl::glGenRenderbuffers, gl::glDeleteRenderbuffers>;
using GLTexture = GLObject<gl::glGenTextures, gl::glDeleteTextures>;

// These two kinds belong to one context and are not shared: hold them through PerContext.
using GLFramebuffer = GLObject<gl::glGenFramebuffers, gl::glDeleteFramebuffers>;
using GLVertexArray = GLObject<gl::glGenVertexArrays, gl::glDeleteVertexArrays>;

} // namespace Kerovane::Tesselune
