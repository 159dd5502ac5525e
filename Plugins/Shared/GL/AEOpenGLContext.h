#pragma once

#include "Platform/OpenGL/OpenGLContext.h"

#include <glbinding/gl/extension.h>

#include <memory>
#include <set>

namespace Kerovane::Tesselune {

/** One GL context of the effect's own, and its binding to the GL function layer. */
class AEOpenGLContext {
public:
    /**
     * Makes a context that shares objects with `shareWith` (null: with none) and leaves it current
     * on the calling thread. Writes the context's report to standard output. Where no context can
     * be had, none is current afterwards and GL calls go nowhere.
     */
    explicit AEOpenGLContext(const AEOpenGLContext* shareWith);

    /// Ends the context. Does not change which context is current.
    virtual ~AEOpenGLContext();

    AEOpenGLContext(const AEOpenGLContext&) = delete;
    AEOpenGLContext& operator=(const AEOpenGLContext&) = delete;

    /// The platform's context, sharing with `shareContext` or with none.
    static std::unique_ptr<Platform::OpenGLContext>
    createNSContext(const Platform::OpenGLContext* shareContext);

    /// Binds the GL function layer to the context current on this thread and prints the report.
    static void InitializeOpenGLBindings();

    /// Makes this context current on the calling thread and selects its function bindings.
    void makeContextCurrent();

    /// Switches to `context` unless it is current already, and flushes the one that it leaves.
    static void makeCurrentFlush(const Platform::OpenGLContext& context);

    /// Flushes what is current, unless a frame buffer that is not complete is bound.
    static void flushCurrent();

    /// False where no context could be had.
    bool isValid() const { return mNSContext->isValid(); }

    /// Whether this context is current on the calling thread.
    bool isCurrent() const { return mNSContext->isCurrent(); }

    /// What the context reported at its creation.
    const std::set<gl::GLextension>& extensions() const { return mExtensions; }

private:
    std::unique_ptr<Platform::OpenGLContext> mNSContext;
    std::set<gl::GLextension> mExtensions;
};

} // namespace Kerovane::Tesselune
