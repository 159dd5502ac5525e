#pragma once

#include <cstdint>

namespace Kerovane::Platform {

/** One OpenGL context of the effect's own: core profile, version 3.3 or above, no surface. */
class OpenGLContext {
public:
    /**
     * Makes a context that shares textures, buffers and programs with `shareWith` (null: with
     * none). If no driver gives one, or `shareWith` is not valid, the object stands for "no
     * context": making it current leaves the thread without an EGL context, so that GL calls go
     * nowhere, unless the host has a GLX context current.
     */
    explicit OpenGLContext(const OpenGLContext* shareWith);
    ~OpenGLContext();
    OpenGLContext(const OpenGLContext&) = delete;
    OpenGLContext& operator=(const OpenGLContext&) = delete;

    bool isValid() const { return mContext != nullptr; }

    /// Whether this context is current on the calling thread. False if it is not valid.
    bool isCurrent() const;

    /// Makes this context current on the calling thread, in place of any other EGL context. It is
    /// let go when the thread ends. If EGL refuses, as it does while another thread has the context
    /// current, or a GLX context is current, the thread is left without an EGL context.
    void makeCurrent() const;

    /// Names this context within the process; above 0 and never used again.
    std::uint64_t id() const { return mId; }

    /// The id of the context of this class that is current on the calling thread, which may have
    /// been destroyed since; 0 if there is none, or one of the host's.
    static std::uint64_t currentId();

private:
    void* mDisplay;
    void* mContext = nullptr;
    std::uint64_t mId;
};

} // namespace Kerovane::Platform
