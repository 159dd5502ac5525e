#include "Platform/OpenGL/OpenGLDescription.h"

#include "Platform/OpenGL/HostContext.h"
#include "Platform/OpenGL/OpenGLContext.h"

#include <EGL/egl.h>
#include <GL/gl.h>

#include <algorithm>

namespace Kerovane::Platform {

namespace {

std::string Text(GLenum name) {
    const auto getString =
        reinterpret_cast<decltype(&glGetString)>(eglGetProcAddress("glGetString"));
    const auto* text = reinterpret_cast<const char*>(getString(name));
    return text != nullptr ? text : "";
}

GLint Number(GLenum name) {
    const auto getInteger =
        reinterpret_cast<decltype(&glGetIntegerv)>(eglGetProcAddress("glGetIntegerv"));
    GLint number = 0;
    getInteger(name, &number);
    return number;
}

} // namespace

std::optional<OpenGLDescription> DescribeOpenGL() {
    constexpr GLenum kMaxRenderbufferSize = 0x84E8;
    const OpenGLContext context(nullptr);
    context.makeCurrent();
    if (!context.isCurrent()) {
        return std::nullopt;
    }
    OpenGLDescription description{
        .vendor = Text(GL_VENDOR),
        .renderer = Text(GL_RENDERER),
        .version = Text(GL_VERSION),
        .largestSide = std::min(Number(GL_MAX_TEXTURE_SIZE), Number(kMaxRenderbufferSize))};
    ReleaseCurrentEglContext();
    return description;
}

} // namespace Kerovane::Platform
