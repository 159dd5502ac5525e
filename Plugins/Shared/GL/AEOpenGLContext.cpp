#include "Plugins/Shared/GL/AEOpenGLContext.h"

#include <glbinding/Binding.h>
#include <glbinding/ContextInfo.h>
#include <glbinding/Meta.h>
#include <glbinding/Version.h>
#include <glbinding/gl/gl.h>

#include <iostream>

namespace Kerovane::Tesselune {

AEOpenGLContext::AEOpenGLContext(const AEOpenGLContext* shareWith)
    : mNSContext(createNSContext(shareWith != nullptr ? shareWith->mNSContext.get() : nullptr,
                                 mCGLContext)) {
    mNSContext->makeCurrent();
    InitializeOpenGLBindings();
    if (mNSContext->isCurrent()) {
        mExtensions = glbinding::ContextInfo::extensions(nullptr);
    }
}

AEOpenGLContext::~AEOpenGLContext() = default;

std::unique_ptr<Platform::OpenGLContext>
AEOpenGLContext::createNSContext(const Platform::OpenGLContext* shareContext,
                                 Platform::OpenGLContext*& cglContext) {
    auto context = std::make_unique<Platform::OpenGLContext>(shareContext);
    cglContext = context.get();
    return context;
}

void AEOpenGLContext::InitializeOpenGLBindings() {
    glbinding::Binding::initialize(false);
    // For a context that glbinding already knows, initialize() selects no bindings on this thread.
    glbinding::Binding::useCurrentContext();
    if (gl::glGetString(gl::GL_VERSION) == nullptr) {
        return; // no context is current
    }
    std::cout << std::endl
              << "OpenGL Version:  " << glbinding::ContextInfo::version() << std::endl
              << "OpenGL Vendor:   " << glbinding::ContextInfo::vendor() << std::endl
              << "OpenGL Renderer: " << glbinding::ContextInfo::renderer() << std::endl
              << "OpenGL Revision: " << glbinding::Meta::glRevision() << " (gl.xml)" << std::endl
              << std::endl;
}

void AEOpenGLContext::makeContextCurrent() {
    mNSContext->makeCurrent();
    makeCurrentFlush(mCGLContext);
    glbinding::Binding::useCurrentContext();
}

void AEOpenGLContext::makeCurrentFlush(Platform::OpenGLContext* context) {
    if (context->isCurrent()) {
        return;
    }
    flushCurrent();
    context->makeCurrent();
}

void AEOpenGLContext::flushCurrent() {
    // glbinding aborts the process if a thread calls GL before it has selected bindings.
    glbinding::Binding::useCurrentContext();
    gl::GLint frameBuffer = 0;
    gl::glGetIntegerv(gl::GL_DRAW_FRAMEBUFFER_BINDING, &frameBuffer);
    if (frameBuffer == 0 ||
        gl::glCheckFramebufferStatus(gl::GL_FRAMEBUFFER) == gl::GL_FRAMEBUFFER_COMPLETE) {
        gl::glFlush();
    }
}

} // namespace Kerovane::Tesselune
