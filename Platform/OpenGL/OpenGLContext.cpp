#include "Platform/OpenGL/OpenGLContext.h"

#include "Platform/OpenGL/EglDisplay.h"
#include "Platform/OpenGL/HostContext.h"

#include <EGL/egl.h>

#include <atomic>

namespace Kerovane::Platform {

namespace {

std::atomic<std::uint64_t> mNextId{1};

/// What makeCurrent last made current on this thread. EGL is asked whether it still is.
struct LastMadeCurrent {
    void* context = nullptr;
    std::uint64_t id = 0;

    bool isStill() const { return context != nullptr && context == eglGetCurrentContext(); }

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
}

std::uint64_t OpenGLContext::currentId() {
    return mLastMadeCurrent.isStill() ? mLastMadeCurrent.id : 0;
}

} // namespace Kerovane::Platform
