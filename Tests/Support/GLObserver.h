#pragma once

#include <glbinding/CallbackMask.h>

namespace Kerovane::TestSupport {

/**
 * Has a callback called, while it lives, after each call of one of glbinding's functions, with the
 * result, where there is one, and the arguments. One at a time for a function.
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
