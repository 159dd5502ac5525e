#include "Platform/OpenGL/OpenGLContext.h"

#include "Platform/OpenGL/EglDisplay.h"
#include "Platform/OpenGL/HostContext.h"

#include <EGL/egl.h>

#include <atomic>

namespace Kerovane::Platform {

namespace {

std::atomic<std::uint64_t> mNextId{1};

/// A destroyed context stays current until its thread lets it go, but EGL no longer knows it.
bool CurrentIsDestroyed() {
    EGLint type = 0;
    return eglQueryContext(eglGetCurrentDisplay(), eglGetCurrentContext(), EGL_CONTEXT_CLIENT_TYPE,
                           &type) == EGL_FALSE;
}

/// What makeCurrent last made current on this thread.
struct LastMadeCurrent {
    void* context = nullptr;
    std::uint64_t id = 0;
    std::weak_ptr<const void> lifetime;

    /// Once the context is freed, the host may be given one of its own at the same address.
    bool isStill() const {
        return context != nullptr && context == eglGetCurrentContext() &&
               (!lifetime.expired() || CurrentIsDestroyed());
    }

    /// A context that is current on a thread that has ended could never be freed.
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
    if (mDisplay != nullptr && (shareWith == nullptr || shareWith->isValid())) {
        mContext = CreateEglContext(mDisplay, shareWith != nullptr ? shareWith->mContext : nullptr);
    }
}

OpenGLContext::~OpenGLContext() {
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
        // The host's context must not receive what is meant for this one.
        ReleaseCurrentEglContext();
        return;
    }
    mLastMadeCurrent.context = mContext;
    mLastMadeCurrent.id = mId;
    mLastMadeCurrent.lifetime = mLifetime;
}

std::uint64_t OpenGLContext::currentId() {
    return mLastMadeCurrent.isStill() ? mLastMadeCurrent.id : 0;
}

} // namespace Kerovane::Platform
