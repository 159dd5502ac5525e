#pragma once

#include "Platform/OpenGL/HostContext.h"

namespace Kerovane::Tesselune {

/**
 * Saves the GL context that the host has current on this thread and restores it. Every command that
 * touches GL begins with one.
 *
 * A host on this platform has an EGL context (`mContext`) or a GLX context (`mRC`). Each is saved
 * with its display and surfaces, which making it current again requires. EGL and GLX contexts
 * cannot replace each other on a thread directly, so the constructor releases a GLX context.
 */
class SaveRestoreGLContextMac {
public:
    /// Saves the current context. A context that the effect left current in an earlier command
    /// counts as none, because it may be destroyed before `restore`.
    SaveRestoreGLContextMac();

    /// Calls `restore`.
    ~SaveRestoreGLContextMac();

    SaveRestoreGLContextMac(const SaveRestoreGLContextMac&) = delete;
    SaveRestoreGLContextMac& operator=(const SaveRestoreGLContextMac&) = delete;

    /**
     * Makes the saved context current again; a second call does nothing. If the host had none, the
     * effect's context stays current.
     */
    void restore();

    /// The saved EGL context with its display and surfaces; empty if there was none.
    const Platform::EglBinding& mContext() const { return _mContext; }
    void setMContext(const Platform::EglBinding& context) { _mContext = context; }

    /// The saved GLX context with its display and drawables; empty if there was none.
    const Platform::GlxBinding& mRC() const { return _mRC; }
    void setMRC(const Platform::GlxBinding& context) { _mRC = context; }

    /// True once `restore` has run.
    bool mRestored() const { return _mRestored; }
    void setMRestored(bool restored) { _mRestored = restored; }

private:
    Platform::EglBinding _mContext;
    Platform::GlxBinding _mRC;
    bool _mRestored = false;
};

} // namespace Kerovane::Tesselune
