#pragma once

#include <glbinding/CallbackMask.h>

namespace Kerovane::TestSupport {

/**
 * Calls a callback, during its lifetime, after each call of a glbinding function, with the result,
 * if any, and the arguments. Only one may exist for a function at a time.
 */
template <typename Function>
class GLObserver {
public:
    template <typename Callback>
    GLObserver(Function& function, Callback callback) : mFunction(function) {
        mFunction.setAfterCallback(callback);
        mFunction.addCallbackMask(glbinding::CallbackMask::After);
    }

    ~GLObserver() {
        mFunction.removeCallbackMask(glbinding::CallbackMask::After);
        mFunction.clearAfterCallback();
    }

    GLObserver(const GLObserver&) = delete;
    GLObserver& operator=(const GLObserver&) = delete;

private:
    Function& mFunction;
};

} // namespace Kerovane::TestSupport
