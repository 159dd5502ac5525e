#include "Plugins/Shared/GL/AEOpenGLContextManager.h"

namespace Kerovane::Tesselune {

namespace {

/// This thread's key in mRenderContexts; -1 until it has one.
thread_local int mThread = -1;

} // namespace

std::atomic<int> AEOpenGLContextManager::mContextCount{0};
NeverDestroyed<AEOpenGLContextManager::RenderContexts> AEOpenGLContextManager::mRenderContexts;
std::recursive_mutex AEOpenGLContextManager::mMutex;
NeverDestroyed<std::unique_ptr<AEOpenGLContext>> AEOpenGLContextManager::mSharedDataContext;

void AEOpenGLContextManager::setupContextManager() {
    if (*mSharedDataContext == nullptr || !(*mSharedDataContext)->isValid()) {
        *mSharedDataContext = std::make_unique<AEOpenGLContext>(nullptr);
    }
}

AEOpenGLContext* AEOpenGLContextManager::getSharedDataContext() {
    return mSharedDataContext->get();
}

AEOpenGLContext* AEOpenGLContextManager::getCurrentRenderContext() {
    const std::lock_guard lock(mMutex);
    if (mThread == -1) {
        mThread = mContextCount.fetch_add(1);
    }
    // A thread keeps its number when all contexts are released and set up again.
    std::unique_ptr<AEOpenGLContext>& context = (*mRenderContexts)[mThread];
    if (context == nullptr || !context->isValid()) {
        context = std::make_unique<AEOpenGLContext>(getSharedDataContext());
    }
    return context.get();
}

void AEOpenGLContextManager::releaseContextManager() {
    mRenderContexts->clear();
    mSharedDataContext->reset();
}

} // namespace Kerovane::Tesselune
