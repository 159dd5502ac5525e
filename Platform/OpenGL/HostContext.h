#pragma once

namespace Kerovane::Platform {

/**
 * A thread's current EGL context, whoever made it, with the display and the surfaces that belong to
 * it. All null if the thread has none.
 */
struct EglBinding {
    void* display = nullptr;
    void* drawSurface = nullptr;
    void* readSurface = nullptr;
    void* context = nullptr;

    bool operator==(const EglBinding&) const = default;
};

/// The same for GLX, with its display and drawables.
struct GlxBinding {
    void* display = nullptr;
    unsigned long drawDrawable = 0;
    unsigned long readDrawable = 0;
    void* context = nullptr;

    bool operator==(const GlxBinding&) const = default;
};

/// What the calling thread has current. At most one of the two is not empty.
EglBinding CurrentEglBinding();
GlxBinding CurrentGlxBinding();

/**
 * Make `binding`, which is not empty, current on the calling thread, whole. A thread has either an
 * EGL or a GLX context: whichever of the other kind is current has to be let go first. A refusal of
 * EGL's is not reported; one of GLX's is an X error, which by default ends the process.
 */
void MakeCurrent(const EglBinding& binding);
void MakeCurrent(const GlxBinding& binding);

/// Let the calling thread's context of that kind go. Nothing happens if there is none.
void ReleaseCurrentEglContext();
void ReleaseCurrentGlxContext();

} // namespace Kerovane::Platform
