#include "Tests/Support/LiveGLObjects.h"

#include "Tests/Support/EglContexts.h"

#include <glbinding/Binding.h>
#include <glbinding/CallbackMask.h>
#include <glbinding/gl/types.h>

#include <span>

using glbinding::Binding;
using glbinding::CallbackMask;

namespace Kerovane::TestSupport {

namespace {

/// Calls `visit(kind, is shared, generate, delete)` for the kinds that GL makes by the array.
template <typename Visitor>
void ForEachArrayKind(Visitor visit) {
    visit("Buffers", true, Binding::GenBuffers, Binding::DeleteBuffers);
    visit("Framebuffers", false, Binding::GenFramebuffers, Binding::DeleteFramebuffers);
    visit("Queries", false, Binding::GenQueries, Binding::DeleteQueries);
    visit("Renderbuffers", true, Binding::GenRenderbuffers, Binding::DeleteRenderbuffers);
    visit("Samplers", true, Binding::GenSamplers, Binding::DeleteSamplers);
    visit("Textures", true, Binding::GenTextures, Binding::DeleteTextures);
    visit("VertexArrays", false, Binding::GenVertexArrays, Binding::DeleteVertexArrays);
}

/// Calls `visit(kind, create, delete)` for those that it makes one at a time, all shared.
template <typename Visitor>
void ForEachSingleKind(Visitor visit) {
    visit("Programs", Binding::CreateProgram, Binding::DeleteProgram);
    visit("Shaders", Binding::CreateShader, Binding::DeleteShader);
    visit("Syncs", Binding::FenceSync, Binding::DeleteSync);
}

std::uintptr_t Key(gl::GLuint name) {
    return name;
}

std::uintptr_t Key(gl::GLsync sync) {
    return reinterpret_cast<std::uintptr_t>(sync);
}

template <typename Function, typename Callback>
void Observe(Function& function, Callback callback) {
    function.setAfterCallback(callback);
    function.addCallbackMask(CallbackMask::After);
}

template <typename Function>
void Ignore(Function& function) {
    function.removeCallbackMask(CallbackMask::After);
    function.clearAfterCallback();
}

} // namespace

LiveGLObjects::LiveGLObjects() {
    ForEachArrayKind([this](const char* kind, bool isShared, auto& generate, auto& destroy) {
        Observe(generate, [=, this](gl::GLsizei n, const gl::GLuint* names) {
            for (const gl::GLuint name : std::span(names, static_cast<std::size_t>(n))) {
                made(kind, isShared, name);
            }
        });
        Observe(destroy, [=, this](gl::GLsizei n, const gl::GLuint* names) {
            for (const gl::GLuint name : std::span(names, static_cast<std::size_t>(n))) {
                deleted(kind, isShared, name);
            }
        });
    });
    ForEachSingleKind([this](const char* kind, auto& create, auto& destroy) {
        Observe(create, [=, this](auto object, auto...) { made(kind, true, Key(object)); });
        Observe(destroy, [=, this](auto object) { deleted(kind, true, Key(object)); });
    });
}

LiveGLObjects::~LiveGLObjects() {
    ForEachArrayKind([](const char*, bool, auto& generate, auto& destroy) {
        Ignore(generate);
        Ignore(destroy);
    });
    ForEachSingleKind([](const char*, auto& create, auto& destroy) {
        Ignore(create);
        Ignore(destroy);
    });
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
