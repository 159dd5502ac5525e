#include "Tests/Adapters/Frei0r/Frei0rHost.h"

#include <dlfcn.h>

#include <stdexcept>

namespace Kerovane::TestSupport {

namespace {

/// Keeps Mesa's EGL library, if it exists, loaded beyond exit(). Otherwise it is unloaded before
/// the leak check, which then reports what its globals hold.
[[maybe_unused]] const void* const kMesa =
    dlopen("libEGL_mesa.so.0", RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE);

template <typename Function>
void Find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    if (function == nullptr) {
        throw std::runtime_error(dlerror());
    }
}

} // namespace

Frei0rHost::Frei0rHost(const std::filesystem::path& module)
    : mLibrary(dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (mLibrary == nullptr) {
        throw std::runtime_error(dlerror());
    }
    Find(mLibrary, "f0r_init", init);
    Find(mLibrary, "f0r_deinit", deinit);
    Find(mLibrary, "f0r_get_plugin_info", getPluginInfo);
    Find(mLibrary, "f0r_get_param_info", getParamInfo);
    Find(mLibrary, "f0r_construct", construct);
    Find(mLibrary, "f0r_destruct", destruct);
    Find(mLibrary, "f0r_set_param_value", setParamValue);
    Find(mLibrary, "f0r_get_param_value", getParamValue);
    Find(mLibrary, "f0r_update", update);
    init();
}

Frei0rHost::~Frei0rHost() {
    deinit();
    dlclose(mLibrary);
}

f0r_plugin_info_t Frei0rHost::info() const {
    f0r_plugin_info_t info{};
    getPluginInfo(&info);
    return info;
}

f0r_param_info_t Frei0rHost::param(int index) const {
    f0r_param_info_t info{};
    getParamInfo(&info, index);
    return info;
}

Frei0rInstance::Frei0rInstance(const Frei0rHost& host, unsigned width, unsigned height)
    : mHost(host), mInstance(host.construct(width, height)) {
    if (mInstance == nullptr) {
        throw std::runtime_error("no instance");
    }
}

Frei0rInstance::~Frei0rInstance() {
    mHost.destruct(mInstance);
}

void Frei0rInstance::set(int index, double position) {
    mHost.setParamValue(mInstance, &position, index);
}

double Frei0rInstance::get(int index) const {
    double position = -1;
    mHost.getParamValue(mInstance, &position, index);
    return position;
}

void Frei0rInstance::update(double time, const std::uint32_t* in, std::uint32_t* out) {
    mHost.update(mInstance, time, in, out);
}

Pixels Frei0rInstance::rendered(const Pixels& in) {
    Pixels out(in.size());
    update(0, in.data(), out.data());
    return out;
}

Installation::Installation(const std::filesystem::path& effect) {
    std::filesystem::create_directories(mFolder / "lib/frei0r-1");
    std::filesystem::copy(FREI0R_MODULE, module());
    if (!effect.empty()) {
        std::filesystem::create_directory(mFolder / "lib/tesselune");
        std::filesystem::copy(effect, mFolder / "lib/tesselune/Tesselune.so");
    }
}

Pixels MotleyPicture(std::size_t width, std::size_t height) {
    Pixels pixels;
    for (std::size_t i = 0; i < width * height; ++i) {
        pixels.push_back(static_cast<std::uint32_t>(i + 1) * 2654435761U);
    }
    return pixels;
}

} // namespace Kerovane::TestSupport
