#pragma once

#include <string>

namespace Kerovane::Platform {

/** The EGL display on which the effect's contexts are made, or why there is none. */
struct EglDisplayChoice {
    void* display = nullptr; ///< an initialised EGLDisplay; null where none can be had
    std::string problem;     ///< one sentence for a person; empty where there is a display
};

/**
 * The process's display: a GPU's device platform where there is a GPU, else the surfaceless
 * platform, which needs neither a GPU nor a display server. Chosen at the first call and kept; it
 * is never terminated, as a host may use the same display.
 */
const EglDisplayChoice& ChosenEglDisplay();

/**
 * A new core-profile context of at least version 3.3, an EGLContext, on `display`; null if the
 * driver refuses it. `shareWith` is a context of the same display or null.
 */
void* CreateEglContext(void* display, void* shareWith);

} // namespace Kerovane::Platform
