#include "Platform/OpenGL/EglDisplay.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <algorithm>
#include <string_view>
#include <vector>

namespace Kerovane::Platform {

namespace {

bool HasExtension(const char* extensions, std::string_view name) {
    std::string_view rest = extensions != nullptr ? extensions : "";
    while (!rest.empty()) {
        const auto end = std::min(rest.find(' '), rest.size());
        if (rest.substr(0, end) == name) {
            return true;
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return false;
}

template <typename Function>
Function FunctionAddress(const char* name) {
    return reinterpret_cast<Function>(eglGetProcAddress(name));
}

std::vector<EGLDeviceEXT> GpuDevices() {
    const auto queryDevices = FunctionAddress<PFNEGLQUERYDEVICESEXTPROC>("eglQueryDevicesEXT");
    const auto queryDeviceString =
        FunctionAddress<PFNEGLQUERYDEVICESTRINGEXTPROC>("eglQueryDeviceStringEXT");
    EGLint count = 0;
    if (queryDevices == nullptr || queryDeviceString == nullptr ||
        queryDevices(0, nullptr, &count) == EGL_FALSE || count <= 0) {
        return {};
    }
    std::vector<EGLDeviceEXT> devices(static_cast<std::size_t>(count));
    if (queryDevices(count, devices.data(), &count) == EGL_FALSE) {
        return {};
    }
    devices.resize(static_cast<std::size_t>(count));
    std::erase_if(devices, [queryDeviceString](EGLDeviceEXT device) {
        return HasExtension(queryDeviceString(device, EGL_EXTENSIONS), "EGL_MESA_device_software");
    });
    return devices;
}

/// Returns displays in order of preference, not yet initialised.
std::vector<EGLDisplay> CandidateDisplays() {
    const char* clientExtensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    const auto getPlatformDisplay =
        FunctionAddress<PFNEGLGETPLATFORMDISPLAYEXTPROC>("eglGetPlatformDisplayEXT");
    std::vector<EGLDisplay> displays;
    if (getPlatformDisplay != nullptr) {
        if (HasExtension(clientExtensions, "EGL_EXT_platform_device")) {
            for (EGLDeviceEXT device : GpuDevices()) {
                displays.push_back(getPlatformDisplay(EGL_PLATFORM_DEVICE_EXT, device, nullptr));
            }
        }
        if (HasExtension(clientExtensions, "EGL_MESA_platform_surfaceless")) {
            displays.push_back(
                getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr));
        }
    }
    displays.push_back(eglGetDisplay(EGL_DEFAULT_DISPLAY));
    std::erase(displays, EGL_NO_DISPLAY);
    return displays;
}

bool CarriesContexts(EGLDisplay display) {
    EGLContext context = CreateEglContext(display, EGL_NO_CONTEXT);
    if (context == EGL_NO_CONTEXT) {
        return false;
    }
    eglDestroyContext(display, context);
    return true;
}

EglDisplayChoice ChooseEglDisplay() {
    bool initialised = false;
    for (EGLDisplay display : CandidateDisplays()) {
        if (eglInitialize(display, nullptr, nullptr) == EGL_FALSE) {
            continue;
        }
        initialised = true;
        if (HasExtension(eglQueryString(display, EGL_EXTENSIONS), "EGL_KHR_surfaceless_context") &&
            CarriesContexts(display)) {
            return {.display = display, .problem = {}};
        }
    }
    return {.display = nullptr,
            .problem = initialised ? "No OpenGL driver here offers a core profile of version 3.3."
                                   : "No OpenGL driver could be initialised through EGL."};
}

EGLConfig ConfigOf(EGLDisplay display) {
    if (HasExtension(eglQueryString(display, EGL_EXTENSIONS), "EGL_KHR_no_config_context")) {
        return EGL_NO_CONFIG_KHR;
    }
    const EGLint attributes[] = {EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_SURFACE_TYPE, 0,
                                 EGL_NONE};
    EGLConfig config = EGL_NO_CONFIG_KHR;
    EGLint count = 0;
    eglChooseConfig(display, attributes, &config, 1, &count);
    return config;
}

} // namespace

const EglDisplayChoice& ChosenEglDisplay() {
    static const EglDisplayChoice kChoice = ChooseEglDisplay();
    return kChoice;
}

void* CreateEglContext(void* display, void* shareWith) {
    const EGLint attributes[] = {EGL_CONTEXT_MAJOR_VERSION,
                                 3,
                                 EGL_CONTEXT_MINOR_VERSION,
                                 3,
                                 EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                 EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                                 EGL_NONE};
    // Remembers the API that the host has bound on this thread, possibly OpenGL ES, to bind it
    // again below.
    const EGLenum hostApi = eglQueryAPI();
    eglBindAPI(EGL_OPENGL_API);
    EGLContext context = eglCreateContext(display, ConfigOf(display), shareWith, attributes);
    eglBindAPI(hostApi);
    return context;
}

} // namespace Kerovane::Platform
