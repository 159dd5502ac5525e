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
 *
 * Contexts are held by unique_ptr, which ends them, and the fields have no end themselves, as at
 * unload the driver may be gone.
 */
class AEOpenGLContextManager {
public:
    AEOpenGLContextManager() = delete;

    /**
     * Makes the shared data context and leaves it current: the caller has saved the host's. If no
     * context can be had, none is current afterwards. A second call before releaseContextManager
     * changes nothing, unless the first one had no context.
     */
    static void setupContextManager();

    /// The shared data context; null outside set-up and release. Takes no lock.
    static AEOpenGLContext* getSharedDataContext();

    /**
     * The calling thread's render context. The thread's first call makes it and leaves it current;
     * so does a later one if it was released since or is not valid. Otherwise what is current does
     * not change. Without a valid shared data context, the result is not valid either. Safe to call
     * from several threads at once.
     */
    static AEOpenGLContext* getCurrentRenderContext();

    /// Ends all contexts, the shared one last. One that is current stays so until its thread lets
    /// it go. No render may be in progress.
    static void releaseContextManager();

private:
    using RenderContexts = std::map<int, std::unique_ptr<AEOpenGLContext>>;

    static std::atomic<int> mContextCount; ///< the next thread's number
    static NeverDestroyed<RenderContexts> mRenderContexts;
    static std::recursive_mutex mMutex; ///< guards mRenderContexts
    static NeverDestroyed<std::unique_ptr<AEOpenGLContext>> mSharedDataContext;
};

} // namespace Kerovane::Tesselune
