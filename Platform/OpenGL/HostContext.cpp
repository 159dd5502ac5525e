#include "Platform/OpenGL/HostContext.h"

#include <EGL/egl.h>
#include <GL/glx.h>

namespace Kerovane::Platform {

EglBinding CurrentEglBinding() {
    EGLContext context = eglGetCurrentContext();
    if (context == EGL_NO_CONTEXT) {
        return {};
    }
    return {.display = eglGetCurrentDisplay(),
            .drawSurface = eglGetCurrentSurface(EGL_DRAW),
            .readSurface = eglGetCurrentSurface(EGL_READ),
            .context = context};
}

GlxBinding CurrentGlxBinding() {
    GLXContext context = glXGetCurrentContext();
    if (context == nullptr) {
        return {};
    }
    return {.display = glXGetCurrentDisplay(),
            .drawDrawable = glXGetCurrentDrawable(),
            .readDrawable = glXGetCurrentReadDrawable(),
            .context = context};
}

void MakeCurrent(const EglBinding& binding) {
    eglMakeCurrent(binding.display, binding.drawSurface, binding.readSurface, binding.context);
}

void MakeCurrent(const GlxBinding& binding) {
    glXMakeContextCurrent(static_cast<Display*>(binding.display), binding.drawDrawable,
                          binding.readDrawable, static_cast<GLXContext>(binding.context));
}

void ReleaseCurrentEglContext() {
    if (eglGetCurrentContext() != EGL_NO_CONTEXT) {
        eglMakeCurrent(eglGetCurrentDisplay(), EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    }
}

void ReleaseCurrentGlxContext() {
    if (glXGetCurrentContext() != nullptr) {
        glXMakeContextCurrent(glXGetCurrentDisplay(), 0, 0, nullptr);
    }
}

} // namespace Kerovane::Platform
