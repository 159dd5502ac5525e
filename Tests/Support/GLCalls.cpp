#include "Tests/Support/GLCalls.h"

#include <glbinding/AbstractFunction.h>
#include <glbinding/CallbackMask.h>
#include <glbinding/FunctionCall.h>
#include <glbinding/callbacks.h>

#include <algorithm>

namespace Kerovane::TestSupport {

GLCalls::GLCalls() {
    glbinding::setAfterCallback([this](const glbinding::FunctionCall& call) {
        mNames.emplace_back(call.function->name());
    });
    glbinding::setCallbackMask(glbinding::CallbackMask::After);
}

GLCalls::~GLCalls() {
    glbinding::setCallbackMask(glbinding::CallbackMask::None);
    glbinding::setAfterCallback({});
}

long GLCalls::count(const std::string& name) const {
    return std::ranges::count(mNames, name);
}

} // namespace Kerovane::TestSupport
