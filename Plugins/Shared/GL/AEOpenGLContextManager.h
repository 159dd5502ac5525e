#pragma once

#include "Plugins/Shared/GL/AEOpenGLContext.h"
#include "Plugins/Shared/Helper/NeverDestroyed.h"

#include <atomic>
#include <map>
#include <memory>
#include <mutex>

namespace Kerovane::Tesselune {

/**
 * The GL contexts of the process: a shared data context, which never renders, and one render
 * context for each thread that renders. All share textures, renderbuffers, buffers and programs.
 *
 * The static members are NeverDestroyed because the driver may already be gone when the module is
 * unloaded. releaseContextManager() destroys the contexts.
 */
class AEOpenGLContextManager {
public:
    AEOpenGLContextManager() = delete;

    /**
     * Creates the shared data context and leaves it current; the caller must have saved the host's
     * context. If creation fails, no context is current afterwards. Does nothing if a valid shared
     * data context exists.
     */
    static void setupContextManager();

    /// Returns the shared data context; null before setupContextManager and after
    /// releaseContextManager. Takes no lock.
    static AEOpenGLContext* getSharedDataContext();

    /**
     * Returns the calling thread's render context. Creates it and leaves it current if the thread
     * has none, or none that is valid; otherwise does not change which context is current. Without
     * a valid shared data context the result is not valid either. Safe to call from several threads
     * at once.
     */
    static AEOpenGLContext* getCurrentRenderContext();

    /// Destroys all contexts, the shared one last. A context that is current on a thread ends once
    /// that thread releases it. No render may be in progress.
    static void releaseContextManager();

private:
    using RenderContexts = std::map<int, std::unique_ptr<AEOpenGLContext>>;

    static std::atomic<int> mContextCount; ///< key of the next thread in mRenderContexts
    static NeverDestroyed<RenderContexts> mRenderContexts;
    static std::recursive_mutex mMutex; ///< guards mRenderContexts
    static NeverDestroyed<std::unique_ptr<AEOpenGLContext>> mSharedDataContext;
};

} // namespace Kerovane::Tesselune
