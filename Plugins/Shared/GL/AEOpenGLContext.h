#pragma once

#include "Platform/OpenGL/OpenGLContext.h"

#include <glbinding/gl/extension.h>

#include <memory>
#include <set>

namespace Kerovane::Tesselune {

/**
 * A GL context of the effect, and its glbinding function bindings.
 *
 * `mNSContext` owns the platform's context and is never null. `mCGLContext` points to the same
 * object: this platform has a single handle for a context.
 */
class AEOpenGLContext {
public:
    /**
     * Creates a context that shares objects with `shareWith` (null: with none) and makes it current
     * on the calling thread. Prints the GL version, vendor and renderer to standard output. If
     * creation fails, no EGL context is current on the thread afterwards and GL calls have no
     * effect.
     */
    explicit AEOpenGLContext(const AEOpenGLContext* shareWith);

    /// Destroys the context. Does not change which context is current.
    virtual ~AEOpenGLContext();

    AEOpenGLContext(const AEOpenGLContext&) = delete;
    AEOpenGLContext& operator=(const AEOpenGLContext&) = delete;

    /// Creates the platform's context, which shares objects with `shareContext` (null: with none).
    /// Sets `cglContext` to point to the result, which owns it.
    static std::unique_ptr<Platform::OpenGLContext>
    createNSContext(const Platform::OpenGLContext* shareContext,
                    Platform::OpenGLContext*& cglContext);

    /// Initialises glbinding for the context that is current on this thread, the effect's or the
    /// host's, and prints its version, vendor and renderer. Prints nothing if none is current.
    static void InitializeOpenGLBindings();

    /// Makes this context current on the calling thread and selects its function bindings. Retries
    /// once; if that fails too, no EGL context is current on the thread.
    void makeContextCurrent();

    /// Makes `context` current. If another context is current, flushes that one first.
    static void makeCurrentFlush(Platform::OpenGLContext* context);

    /// Flushes the current context, unless an incomplete frame buffer is bound.
    static void flushCurrent();

    /// Returns false if the context could not be created.
    bool isValid() const { return mNSContext->isValid(); }

    /// Returns whether this context is current on the calling thread.
    bool isCurrent() const { return mNSContext->isCurrent(); }

    /// The extensions that the context reported at its creation.
    const std::set<gl::GLextension>& extensions() const { return mExtensions; }

private:
    Platform::OpenGLContext* mCGLContext = nullptr;
    std::unique_ptr<Platform::OpenGLContext> mNSContext;
    std::set<gl::GLextension> mExtensions;
};

} // namespace Kerovane::Tesselune
