#include "Tests/Support/EglHost.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <stdexcept>

namespace Kerovane::TestSupport {

EglHost::EglHost() {
    eglBindAPI(EGL_OPENGL_API);
    EGLDisplay display =
        eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    eglInitialize(display, nullptr, nullptr);
    const EGLint wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                             EGL_NONE};
    const EGLint size[] = {EGL_WIDTH, 16, EGL_HEIGHT, 16, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    eglChooseConfig(display, wanted, &config, 1, &count);
    mBinding = {.display = display,
                .drawSurface = eglCreatePbufferSurface(display, config, size),
                .readSurface = eglCreatePbufferSurface(display, config, size),
                .context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr)};
    if (mBinding.context == nullptr || mBinding.drawSurface == nullptr) {
        throw std::runtime_error("no EGL context with a pbuffer can be had");
    }
}

EglHost::~EglHost() {
    Platform::ReleaseCurrentEglContext();
    eglDestroySurface(mBinding.display, mBinding.drawSurface);
    eglDestroySurface(mBinding.display, mBinding.readSurface);
    eglDestroyContext(mBinding.display, mBinding.context);
}

} // namespace Kerovane::TestSupport
