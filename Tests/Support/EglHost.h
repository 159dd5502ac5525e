#pragma once

#include "Platform/OpenGL/HostContext.h"

namespace Kerovane::TestSupport {

/**
 * A host's EGL context, with different surfaces for drawing and reading, on the display that the
 * effect uses.
 */
class EglHost {
public:
    EglHost();
    ~EglHost();
    EglHost(const EglHost&) = delete;
    EglHost& operator=(const EglHost&) = delete;

    void makeCurrent() const { Platform::MakeCurrent(mBinding); }
    const Platform::EglBinding& binding() const { return mBinding; }

private:
    Platform::EglBinding mBinding;
};

} // namespace Kerovane::TestSupport
