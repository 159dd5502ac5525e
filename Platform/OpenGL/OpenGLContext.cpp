#include "Platform/OpenGL/OpenGLContext.h"

#include "Platform/OpenGL/EglDisplay.h"
#include "Platform/OpenGL/HostContext.h"

#include <EGL/egl.h>

#include <atomic>
#include <mutex>
#include <set>

namespace Kerovane::Platform {

namespace {

std::atomic<std::uint64_t> mNextId{1};

/// The ids of the contexts that have not been destroyed.
class LiveIds {
public:
    void add(std::uint64_t id) {
        const std::lock_guard lock(mMutex);
        mIds.insert(id);
    }
    void remove(std::uint64_t id) {
        const std::lock_guard lock(mMutex);
        mIds.erase(id);
    }
    bool has(std::uint64_t id) const {
        const std::lock_guard lock(mMutex);
        return mIds.count(id) != 0;
    }

private:
    mutable std::mutex mMutex;
    std::set<std::uint64_t> mIds;
};

LiveIds mLiveIds;

/// Returns whether the current context has been destroyed. A destroyed context stays current until
/// its thread releases it, but EGL no longer answers queries about it.
bool CurrentIsDestroyed() {
    EGLint type = 0;
    return eglQueryContext(eglGetCurrentDisplay(), eglGetCurrentContext(), EGL_CONTEXT_CLIENT_TYPE,
                           &type) == EGL_FALSE;
}

/// The context that makeCurrent last made current on this thread.
struct LastMadeCurrent {
    void* context = nullptr;
    std::uint64_t id = 0;

    /// Returns whether the context is still current. Comparing the address is not enough: once the
    /// context is freed, the host may get a context of its own at the same address.
    bool isStill() const {
        return context != nullptr && context == eglGetCurrentContext() &&
               (mLiveIds.has(id) || CurrentIsDestroyed());
    }

    /// Releases the context: one that is current on a thread that has ended could never be freed.
    ~LastMadeCurrent() {
        if (isStill()) {
            ReleaseCurrentEglContext();
        }
    }
};

thread_local LastMadeCurrent mLastMadeCurrent;

} // namespace

OpenGLContext::OpenGLContext(const OpenGLContext* shareWith)
    : mDisplay(ChosenEglDisplay().display), mId(mNextId++) {
    mLiveIds.add(mId); // may throw; the context, which would leak, does not exist yet
    if (mDisplay != nullptr && (shareWith == nullptr || shareWith->isValid())) {
        mContext = CreateEglContext(mDisplay, shareWith != nullptr ? shareWith->mContext : nullptr);
    }
}

OpenGLContext::~OpenGLContext() {
    mLiveIds.remove(mId);
    if (mContext != nullptr) {
        eglDestroyContext(mDisplay, mContext);
    }
}

bool OpenGLContext::isCurrent() const {
    return mContext != nullptr && currentId() == mId;
}

void OpenGLContext::makeCurrent() const {
    if (mContext == nullptr ||
        eglMakeCurrent(mDisplay, EGL_NO_SURFACE, EGL_NO_SURFACE, mContext) == EGL_FALSE) {
        // Otherwise the host's context would receive the GL calls meant for this one.
        ReleaseCurrentEglContext();
        return;
    }
    mLastMadeCurrent.context = mContext;
    mLastMadeCurrent.id = mId;
}

std::uint64_t OpenGLContext::currentId() {
    return mLastMadeCurrent.isStill() ? mLastMadeCurrent.id : 0;
}

} // namespace Kerovane::Platform
