#include "Support/LiveGLObjects.h"

#include <glbinding/Binding.h>
#include <glbinding/CallbackMask.h>
#include <glbinding/gl/types.h>

#include <algorithm>

using glbinding::Binding;
using glbinding::CallbackMask;

namespace Kerovane::TestSupport {

namespace {

/// Calls `visit(kind, generate, delete)` for the kinds of objects that GL makes by the array.
template <typename Visitor>
void ForEachArrayKind(Visitor visit) {
    visit("Buffers", Binding::GenBuffers, Binding::DeleteBuffers);
    visit("Framebuffers", Binding::GenFramebuffers, Binding::DeleteFramebuffers);
    visit("Renderbuffers", Binding::GenRenderbuffers, Binding::DeleteRenderbuffers);
    visit("Samplers", Binding::GenSamplers, Binding::DeleteSamplers);
    visit("Textures", Binding::GenTextures, Binding::DeleteTextures);
    visit("VertexArrays", Binding::GenVertexArrays, Binding::DeleteVertexArrays);
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
    ForEachArrayKind([this](const char* kind, auto& generate, auto& destroy) {
        Observe(generate, [this, kind](gl::GLsizei n, const gl::GLuint*) { mCounts[kind] += n; });
        Observe(destroy, [this, kind](gl::GLsizei n, const gl::GLuint* names) {
            mCounts[kind] -= static_cast<int>(
                std::count_if(names, names + n, [](gl::GLuint name) { return name != 0; }));
        });
    });
    Observe(Binding::CreateShader, [this](gl::GLuint, gl::GLenum) { ++mCounts["Shaders"]; });
    Observe(Binding::DeleteShader, [this](gl::GLuint) { --mCounts["Shaders"]; });
    Observe(Binding::CreateProgram, [this](gl::GLuint) { ++mCounts["Programs"]; });
    Observe(Binding::DeleteProgram, [this](gl::GLuint) { --mCounts["Programs"]; });
}

LiveGLObjects::~LiveGLObjects() {
    ForEachArrayKind([](const char*, auto& generate, auto& destroy) {
        Ignore(generate);
        Ignore(destroy);
    });
    Ignore(Binding::CreateShader);
    Ignore(Binding::DeleteShader);
    Ignore(Binding::CreateProgram);
    Ignore(Binding::DeleteProgram);
}

std::map<std::string, int> LiveGLObjects::counts() const {
    std::map<std::string, int> live = mCounts;
    std::erase_if(live, [](const auto& count) { return count.second == 0; });
    return live;
}

} // namespace Kerovane::TestSupport
