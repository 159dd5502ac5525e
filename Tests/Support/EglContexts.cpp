#include "Tests/Support/EglContexts.h"

#include <EGL/egl.h>

#include <algorithm>
#include <map>
#include <mutex>

#include <dlfcn.h>

namespace Kerovane::TestSupport::EglContexts {

namespace {

std::mutex mMutex; ///< guards the variables below
std::map<EGLContext, std::uint64_t> mNumbers;
std::uint64_t mLastNumber = 0;
EglCall mFaultyCall = EglCall::Count;
int mCallsToFault = 0;
int mFaults = 0;

/// Returns EGL's own function, which the replacement below hides.
template <typename Function>
Function* Original(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool Fails(EglCall call) {
    const std::lock_guard lock(mMutex);
    return call == mFaultyCall && --mCallsToFault <= 0 && mCallsToFault > -mFaults;
}

} // namespace

int live() {
    const std::lock_guard lock(mMutex);
    return static_cast<int>(mNumbers.size());
}

std::uint64_t currentNumber() {
    const std::lock_guard lock(mMutex);
    const auto found = mNumbers.find(eglGetCurrentContext());
    return found != mNumbers.end() ? found->second : 0;
}

bool isLive(std::uint64_t number) {
    const std::lock_guard lock(mMutex);
    return std::ranges::any_of(mNumbers,
                               [number](const auto& entry) { return entry.second == number; });
}

void fail(EglCall call, int nth, int times) {
    const std::lock_guard lock(mMutex);
    mFaultyCall = call;
    mCallsToFault = nth;
    mFaults = nth > 0 ? times : 0;
}

} // namespace Kerovane::TestSupport::EglContexts

// Replace EGL's functions, for loaded modules too.

namespace EglContexts = Kerovane::TestSupport::EglContexts;
using Kerovane::TestSupport::EglCall;

[[gnu::visibility("default")]] EGLContext eglCreateContext(EGLDisplay dpy, EGLConfig config,
                                                           EGLContext share_context,
                                                           const EGLint* attrib_list) {
    static auto* const kOriginal =
        EglContexts::Original<decltype(eglCreateContext)>("eglCreateContext");
    if (EglContexts::Fails(EglCall::CreateContext)) {
        return EGL_NO_CONTEXT;
    }
    EGLContext context = kOriginal(dpy, config, share_context, attrib_list);
    if (context != EGL_NO_CONTEXT) {
        const std::lock_guard lock(EglContexts::mMutex);
        EglContexts::mNumbers[context] = ++EglContexts::mLastNumber;
    }
    return context;
}

[[gnu::visibility("default")]] EGLBoolean eglDestroyContext(EGLDisplay dpy, EGLContext ctx) {
    static auto* const kOriginal =
        EglContexts::Original<decltype(eglDestroyContext)>("eglDestroyContext");
    {
        const std::lock_guard lock(EglContexts::mMutex);
        EglContexts::mNumbers.erase(ctx);
    }
    return kOriginal(dpy, ctx);
}

[[gnu::visibility("default")]] EGLBoolean eglMakeCurrent(EGLDisplay dpy, EGLSurface draw,
                                                         EGLSurface read, EGLContext ctx) {
    static auto* const kOriginal =
        EglContexts::Original<decltype(eglMakeCurrent)>("eglMakeCurrent");
    const bool fails = ctx != EGL_NO_CONTEXT && EglContexts::Fails(EglCall::MakeCurrent);
    return fails ? EGL_FALSE : kOriginal(dpy, draw, read, ctx);
}
