#include "Plugins/Shared/GL/AEOpenGLContext.h"

#include <glbinding/Binding.h>
#include <glbinding/ContextInfo.h>
#include <glbinding/Meta.h>
#include <glbinding/Version.h>
#include <glbinding/gl/gl.h>

#include <iostream>

namespace Kerovane::Tesselune {

AEOpenGLContext::AEOpenGLContext(const AEOpenGLContext* shareWith)
    : mNSContext(createNSContext(shareWith != nullptr ? shareWith->mNSContext.get() : nullptr)) {
    mNSContext->makeCurrent();
    InitializeOpenGLBindings();
    if (mNSContext->isCurrent()) {
        mExtensions = glbinding::ContextInfo::extensions(nullptr);
    }
}

AEOpenGLContext::~AEOpenGLContext() = default;

std::unique_ptr<Platform::OpenGLContext>
AEOpenGLContext::createNSContext(const Platform::OpenGLContext* shareContext) {
    return std::make_unique<Platform::OpenGLContext>(shareContext);
}

void AEOpenGLContext::InitializeOpenGLBindings() {
    glbinding::Binding::initialize(false);
    // Once the layer knows a context, the call above does nothing for the thread.
    glbinding::Binding::useCurrentContext();
    if (Platform::OpenGLContext::currentId() == 0) {
        return; // nothing to report on
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
    glbinding::Binding::useCurrentContext();
}

void AEOpenGLContext::makeCurrentFlush(const Platform::OpenGLContext& context) {
    if (context.isCurrent()) {
        return;
    }
    flushCurrent();
    context.makeCurrent();
}

void AEOpenGLContext::flushCurrent() {
    gl::GLint frameBuffer = 0;
    gl::glGetIntegerv(gl::GL_DRAW_FRAMEBUFFER_BINDING, &frameBuffer);
    if (frameBuffer == 0 ||
        gl::glCheckFramebufferStatus(gl::GL_FRAMEBUFFER) == gl::GL_FRAMEBUFFER_COMPLETE) {
        gl::glFlush();
    }
}

} // namespace Kerovane::Tesselune
