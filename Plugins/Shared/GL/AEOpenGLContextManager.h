#pragma once

#include "Plugins/Shared/GL/AEOpenGLContext.h"
#include "Plugins/Shared/Helper/NeverDestroyed.h"

#include <atomic>
#include <map>
#include <memory>
#include <mutex>

namespace Kerovane::Tesselune {

/**
 * The process-wide set of contexts: one for shared data, which never renders, and one for every
 * thread that renders. All share textures, renderbuffers, buffers and programs.
 */
class AEOpenGLContextManager {
public:
    AEOpenGLContextManager() = delete;

    /**
     * Makes the shared data context and leaves it current: the caller has saved the host's. A
     * second call before releaseContextManager keeps the one there is, if it could be had.
     */
    static void setupContextManager();

    /// The shared data context; null outside set-up and release. Takes no lock.
    static AEOpenGLContext* getSharedDataContext();

    /**
     * The calling thread's render context, made at its first call, when it is also left current.
     * Later calls change nothing, but try again where none could be had. Safe to call from several
     * threads at once.
     */
    static AEOpenGLContext* getCurrentRenderContext();

    /// Ends all contexts, the shared one last. No render may be in progress.
    static void releaseContextManager();

private:
    using RenderContexts = std::map<int, std::unique_ptr<AEOpenGLContext>>;

    static std::atomic<int> mContextCount; ///< the next thread's number
    static NeverDestroyed<RenderContexts> mRenderContexts;
    static std::recursive_mutex mMutex; ///< guards mRenderContexts
    static NeverDestroyed<std::unique_ptr<AEOpenGLContext>> mSharedDataContext;
};

} // namespace Kerovane::Tesselune
