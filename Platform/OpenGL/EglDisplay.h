#pragma once

#include <string>

namespace Kerovane::Platform {

/** The EGL display on which the effect's contexts are created, or the reason why there is none. */
struct EglDisplayChoice {
    void* display = nullptr; ///< an initialised EGLDisplay; null if none was found
    std::string problem;     ///< one sentence for the user; empty if there is a display
};

/**
 * Returns the first display on which a context can be created: a GPU's device platform, else the
 * surfaceless platform, which needs neither a GPU nor a display server, else EGL's default display.
 * Chosen at the first call and kept. Never terminated, because a host may use the same display.
 */
const EglDisplayChoice& ChosenEglDisplay();

/**
 * Creates an EGLContext on `display`: core profile, version 3.3 or later. Returns null if the
 * driver refuses. `shareWith` is a context of the same display or null.
 */
void* CreateEglContext(void* display, void* shareWith);

} // namespace Kerovane::Platform
