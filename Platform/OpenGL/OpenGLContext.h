#pragma once

#include <cstdint>

namespace Kerovane::Platform {

/** An OpenGL context of the effect: core profile, version 3.3 or later, without a surface. */
class OpenGLContext {
public:
    /**
     * Creates a context that shares textures, buffers and programs with `shareWith` (null: with
     * none). If no driver offers such a context, or `shareWith` is not valid, this object is not
     * valid: makeCurrent then leaves the thread without an EGL context, so that GL calls have no
     * effect unless the host has a GLX context current.
     */
    explicit OpenGLContext(const OpenGLContext* shareWith);
    ~OpenGLContext();
    OpenGLContext(const OpenGLContext&) = delete;
    OpenGLContext& operator=(const OpenGLContext&) = delete;

    bool isValid() const { return mContext != nullptr; }

    /// Returns whether this context is current on the calling thread. False if it is not valid.
    bool isCurrent() const;

    /// Makes this context current on the calling thread instead of any other EGL context. The
    /// thread releases it when it ends. If EGL refuses, because another thread has the context
    /// current or this thread has a GLX context, no EGL context is current afterwards.
    void makeCurrent() const;

    /// Identifies this context within the process; above 0 and never reused.
    std::uint64_t id() const { return mId; }

    /// Returns the id of the effect's context that is current on the calling thread, even if it has
    /// been destroyed since. Returns 0 if none is current or the current one is the host's.
    static std::uint64_t currentId();

private:
    void* mDisplay;
    void* mContext = nullptr;
    std::uint64_t mId;
};

} // namespace Kerovane::Platform
