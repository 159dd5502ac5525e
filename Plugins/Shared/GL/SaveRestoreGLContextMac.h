#pragma once

#include "Platform/OpenGL/HostContext.h"

namespace Kerovane::Tesselune {

/**
 * Remembers which GL context the host has current on this thread and makes it current again. A
 * command that touches GL begins with one.
 *
 * A host on this platform has an EGL context (`mContext`) or a GLX context (`mRC`). Each is held
 * with its display and surfaces instead of as a bare handle, as it is made current with them. The
 * two can't follow each other on a thread directly, so construction lets a GLX context go.
 */
class SaveRestoreGLContextMac {
public:
    /// Remembers what is current. A context of the effect's own, left by an earlier command, counts
    /// as none: it may be destroyed before `restore`.
    SaveRestoreGLContextMac();

    /// Restores, if that has not been done.
    ~SaveRestoreGLContextMac();

    SaveRestoreGLContextMac(const SaveRestoreGLContextMac&) = delete;
    SaveRestoreGLContextMac& operator=(const SaveRestoreGLContextMac&) = delete;

    /**
     * Makes what was current so again; the second call does nothing. If the host had no context,
     * the effect's stays current.
     */
    void restore();

    /// The EGL context that was current, with display and surfaces; empty if there was none.
    const Platform::EglBinding& mContext() const { return _mContext; }
    void setMContext(const Platform::EglBinding& context) { _mContext = context; }

    /// The GLX context that was current, with display and drawables; empty if there was none.
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
