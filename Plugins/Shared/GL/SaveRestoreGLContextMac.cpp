#include "Plugins/Shared/GL/SaveRestoreGLContextMac.h"

#include "Plugins/Shared/GL/AEOpenGLContext.h"

namespace Kerovane::Tesselune {

SaveRestoreGLContextMac::SaveRestoreGLContextMac() : _mRC(Platform::CurrentGlxBinding()) {
    if (Platform::OpenGLContext::currentId() == 0) {
        _mContext = Platform::CurrentEglBinding();
    }
    Platform::ReleaseCurrentGlxContext();
}

SaveRestoreGLContextMac::~SaveRestoreGLContextMac() {
    restore();
}

void SaveRestoreGLContextMac::restore() {
    if (_mRestored) {
        return;
    }
    _mRestored = true;
    const bool eglDiffers =
        _mContext.context != nullptr && _mContext != Platform::CurrentEglBinding();
    const bool glxDiffers = _mRC.context != nullptr && _mRC != Platform::CurrentGlxBinding();
    if (!eglDiffers && !glxDiffers) {
        return;
    }
    if (Platform::OpenGLContext::currentId() != 0) {
        AEOpenGLContext::flushCurrent();
    }
    if (eglDiffers) {
        Platform::MakeCurrent(_mContext);
    } else {
        Platform::ReleaseCurrentEglContext();
        Platform::MakeCurrent(_mRC);
    }
}

} // namespace Kerovane::Tesselune
