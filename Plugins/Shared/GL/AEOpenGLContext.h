#pragma once

#include "Platform/OpenGL/OpenGLContext.h"

#include <glbinding/gl/extension.h>

#include <memory>
#include <set>

namespace Kerovane::Tesselune {

/**
 * One GL context of the effect's own, and its binding to the GL function layer.
 *
 * The platform has one handle for a context: `mNSContext` owns it and is never null, `mCGLContext`
 * points to the same object.
 */
class AEOpenGLContext {
public:
    /**
     * Makes a context that shares objects with `shareWith` (null: with none) and leaves it current
     * on the calling thread. Writes the context's report to standard output. If no context can be
     * had, the thread's EGL context is let go, so that GL calls go nowhere.
     */
    explicit AEOpenGLContext(const AEOpenGLContext* shareWith);

    /// Ends the context. Does not change which context is current.
    virtual ~AEOpenGLContext();

    AEOpenGLContext(const AEOpenGLContext&) = delete;
    AEOpenGLContext& operator=(const AEOpenGLContext&) = delete;

    /// The platform's context, sharing with `shareContext` or with none (null). `cglContext`
    /// becomes its handle, valid as long as the result.
    static std::unique_ptr<Platform::OpenGLContext>
    createNSContext(const Platform::OpenGLContext* shareContext,
                    Platform::OpenGLContext*& cglContext);

    /// Binds the GL function layer to the context current on this thread, whosever it is, and
    /// prints the report. Prints nothing if none is current.
    static void InitializeOpenGLBindings();

    /// Makes this context current on the calling thread and selects its function bindings. If that
    /// fails twice, the thread is left without an EGL context.
    void makeContextCurrent();

    /// Switches to `context` unless it is current already, and flushes the one that it leaves.
    static void makeCurrentFlush(Platform::OpenGLContext* context);

    /// Flushes what is current, unless a frame buffer that is not complete is bound.
    static void flushCurrent();

    /// False if no context could be had.
    bool isValid() const { return mNSContext->isValid(); }

    /// Whether this context is current on the calling thread.
    bool isCurrent() const { return mNSContext->isCurrent(); }

    /// What the context reported at its creation.
    const std::set<gl::GLextension>& extensions() const { return mExtensions; }

private:
    Platform::OpenGLContext* mCGLContext = nullptr;
    std::unique_ptr<Platform::OpenGLContext> mNSContext;
    std::set<gl::GLextension> mExtensions;
};

} // namespace Kerovane::Tesselune
