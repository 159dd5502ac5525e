#pragma once

#include <glbinding/gl/gl.h>

#include <utility>

namespace Kerovane::Tesselune {

/**
 * Owns a GL name (0: none) and deletes the GL object in its destructor. The object's context, or
 * for shareable kinds a context of its share group, must be current then.
 */
template <auto Delete>
class GLName {
public:
    GLName() = default;
    explicit GLName(unsigned int name) : mName(name) {}
    ~GLName() { reset(); }
    GLName(GLName&& other) noexcept : mName(other.release()) {}
    GLName& operator=(GLName&& other) noexcept {
        std::swap(mName, other.mName);
        return *this;
    }

    unsigned int name() const { return mName; }
    explicit operator bool() const { return mName != 0; }

    void reset() {
        if (mName != 0) {
            Delete(std::exchange(mName, 0U));
        }
    }

    /// Returns the name and gives up ownership without deleting the object.
    unsigned int release() noexcept { return std::exchange(mName, 0U); }

private:
    unsigned int mName = 0;
};

template <auto DeleteSeveral>
void DeleteOne(unsigned int name) {
    DeleteSeveral(1, &name);
}

/// The owner for kinds of objects that GL generates and deletes in arrays.
template <auto GenerateSeveral, auto DeleteSeveral>
class GLObject : public GLName<DeleteOne<DeleteSeveral>> {
public:
    using GLName<DeleteOne<DeleteSeveral>>::GLName;

    static GLObject generated() {
        unsigned int name = 0;
        GenerateSeveral(1, &name);
        return GLObject(name);
    }
};

using GLProgram = GLName<gl::glDeleteProgram>;
using GLShader = GLName<gl::glDeleteShader>;

using GLBuffer = GLObject<gl::glGenBuffers, gl::glDeleteBuffers>;
using GLRenderbuffer = GLObject<gl::glGenRenderbuffers, gl::glDeleteRenderbuffers>;
using GLSampler = GLObject<gl::glGenSamplers, gl::glDeleteSamplers>;
using GLTexture = GLObject<gl::glGenTextures, gl::glDeleteTextures>;

// Contexts do not share these two kinds: hold them in a PerContext.
using GLFramebuffer = GLObject<gl::glGenFramebuffers, gl::glDeleteFramebuffers>;
using GLVertexArray = GLObject<gl::glGenVertexArrays, gl::glDeleteVertexArrays>;

} // namespace Kerovane::Tesselune
