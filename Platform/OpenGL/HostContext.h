#pragma once

namespace Kerovane::Platform {

/**
 * A thread's current EGL context, the effect's or the host's, with its display and surfaces. All
 * null if the thread has none.
 */
struct EglBinding {
    void* display = nullptr;
    void* drawSurface = nullptr;
    void* readSurface = nullptr;
    void* context = nullptr;

    bool operator==(const EglBinding&) const = default;
};

/// A thread's current GLX context, with its display and drawables. All null or 0 if the thread has
/// none.
struct GlxBinding {
    void* display = nullptr;
    unsigned long drawDrawable = 0;
    unsigned long readDrawable = 0;
    void* context = nullptr;

    bool operator==(const GlxBinding&) const = default;
};

/// Return the context that the calling thread has current. At most one of the two results is not
/// empty.
EglBinding CurrentEglBinding();
GlxBinding CurrentGlxBinding();

/**
 * Make `binding`, which must not be empty, current on the calling thread. A thread has either an
 * EGL or a GLX context: release a context of the other kind first. If EGL refuses, nothing is
 * reported; if GLX refuses, an X error occurs, which by default ends the process.
 */
void MakeCurrent(const EglBinding& binding);
void MakeCurrent(const GlxBinding& binding);

/// Release the EGL or the GLX context that the calling thread has current. Do nothing if there is
/// none.
void ReleaseCurrentEglContext();
void ReleaseCurrentGlxContext();

} // namespace Kerovane::Platform
