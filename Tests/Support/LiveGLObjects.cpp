#include "Tests/Support/LiveGLObjects.h"

#include "Tests/Support/EglContexts.h"
#include "Tests/Support/GLObserver.h"

#include <glbinding/Binding.h>
#include <glbinding/gl/types.h>

#include <span>

using glbinding::Binding;

namespace Kerovane::TestSupport {

namespace {

std::uintptr_t Key(gl::GLuint name) {
    return name;
}

std::uintptr_t Key(gl::GLsync sync) {
    return reinterpret_cast<std::uintptr_t>(sync);
}

} // namespace

LiveGLObjects::LiveGLObjects() {
    observeArrays("Buffers", true, Binding::GenBuffers, Binding::DeleteBuffers);
    observeArrays("Framebuffers", false, Binding::GenFramebuffers, Binding::DeleteFramebuffers);
    observeArrays("Queries", false, Binding::GenQueries, Binding::DeleteQueries);
    observeArrays("Renderbuffers", true, Binding::GenRenderbuffers, Binding::DeleteRenderbuffers);
    observeArrays("Samplers", true, Binding::GenSamplers, Binding::DeleteSamplers);
    observeArrays("Textures", true, Binding::GenTextures, Binding::DeleteTextures);
    observeArrays("VertexArrays", false, Binding::GenVertexArrays, Binding::DeleteVertexArrays);
    observeSingles("Programs", Binding::CreateProgram, Binding::DeleteProgram);
    observeSingles("Shaders", Binding::CreateShader, Binding::DeleteShader);
    observeSingles("Syncs", Binding::FenceSync, Binding::DeleteSync);
}

template <typename Function, typename Callback>
void LiveGLObjects::observe(Function& function, Callback callback) {
    mObservers.push_back(std::make_shared<GLObserver<Function>>(function, callback));
}

template <typename Generate, typename Delete>
void LiveGLObjects::observeArrays(const char* kind, bool isShared, Generate& generate,
                                  Delete& destroy) {
    observe(generate, [=, this](gl::GLsizei n, const gl::GLuint* names) {
        for (const gl::GLuint name : std::span(names, static_cast<std::size_t>(n))) {
            made(kind, isShared, name);
        }
    });
    observe(destroy, [=, this](gl::GLsizei n, const gl::GLuint* names) {
        for (const gl::GLuint name : std::span(names, static_cast<std::size_t>(n))) {
            deleted(kind, isShared, name);
        }
    });
}

template <typename Create, typename Delete>
void LiveGLObjects::observeSingles(const char* kind, Create& create, Delete& destroy) {
    observe(create, [=, this](auto object, auto...) { made(kind, true, Key(object)); });
    observe(destroy, [=, this](auto object) { deleted(kind, true, Key(object)); });
}

std::map<std::string, int> LiveGLObjects::counts() const {
    const std::lock_guard lock(mMutex);
    std::map<std::string, int> counts;
    for (const auto& [kind, context, object] : mObjects) {
        if (context == 0 || EglContexts::isLive(context)) {
            ++counts[kind];
        }
    }
    return counts;
}

void LiveGLObjects::made(const char* kind, bool isShared, std::uintptr_t object) {
    const std::uint64_t context = EglContexts::currentNumber();
    if (context != 0 && object != 0) {
        const std::lock_guard lock(mMutex);
        mObjects.emplace(kind, isShared ? 0 : context, object);
    }
}

void LiveGLObjects::deleted(const char* kind, bool isShared, std::uintptr_t object) {
    const std::uint64_t context = EglContexts::currentNumber();
    if (context != 0) {
        const std::lock_guard lock(mMutex);
        mObjects.erase({kind, isShared ? 0 : context, object});
    }
}

} // namespace Kerovane::TestSupport
