#pragma once

#include <string>

namespace Kerovane::Platform {

/** The EGL display on which the effect's contexts are made, or why there is none. */
struct EglDisplayChoice {
    void* display = nullptr; ///< an initialised EGLDisplay; null if none can be had
    std::string problem;     ///< one sentence for a person; empty if there is a display
};

/**
 * The process's display, the first that gives a context: a GPU's device platform, else the
 * surfaceless platform, which needs neither a GPU nor a display server, else EGL's default display.
 * Chosen at the first call and kept; never terminated, as a host may use the same display.
 */
const EglDisplayChoice& ChosenEglDisplay();

/**
 * A new core-profile context of at least version 3.3, an EGLContext, on `display`; null if the
 * driver refuses it. `shareWith` is a context of the same display or null.
 */
void* CreateEglContext(void* display, void* shareWith);

} // namespace Kerovane::Platform
