// The functions that hosts look up by name. None of them throws.

#include "Adapters/Frei0r/Declaration.h"
#include "Adapters/Frei0r/Frei0rInterface.h"
#include "Adapters/Frei0r/Instance.h"
#include "Adapters/Shared/Complaint.h"
#include "Adapters/Shared/SharedRenderer.h"

#include <fmt/format.h>

#include <cerrno> // program_invocation_short_name
#include <exception>
#include <string>
#include <string_view>

namespace Kerovane::Frei0r {

namespace {

Instance& InstanceOf(f0r_instance_t instance) {
    return *static_cast<Instance*>(instance);
}

bool IsControl(int index) {
    return index >= 0 && static_cast<std::size_t>(index) < DeclaredControls().size();
}

/// Warns users of ffmpeg if the width is no multiple of 16. On some machines ffmpeg then pads the
/// rows, and frei0r has no way to tell the plug-in.
void ComplainOfPadding(unsigned int width) {
    constexpr unsigned int kPixels = 16;
    const std::string_view program = program_invocation_short_name;
    if (width % kPixels != 0 && program.starts_with("ff")) {
        Adapters::Complain(
            fmt::format("a width of {} is no multiple of {}, and ffmpeg may skew the "
                        "picture; crop=trunc(iw/16)*16:ih before the filter helps",
                        width, kPixels));
    }
}

/// Returns the position that frei0r passes for a control. The types of all controls are passed as a
/// double.
double& PositionIn(f0r_param_t param) {
    return *static_cast<double*>(param);
}

} // namespace

} // namespace Kerovane::Frei0r

using namespace Kerovane;
using namespace Kerovane::Frei0r;

int f0r_init() {
    Adapters::SharedRenderer::countLoad();
    return 1;
}

void f0r_deinit() {
    Adapters::SharedRenderer::countUnload();
}

void f0r_get_plugin_info(f0r_plugin_info_t* info) {
    *info = {.name = "Tesselune",
             .author = "Kerovane",
             .plugin_type = F0R_PLUGIN_TYPE_FILTER,
             .color_model = F0R_COLOR_MODEL_RGBA8888,
             .frei0r_version = FREI0R_MAJOR_VERSION,
             .major_version = TESSELUNE_VERSION_MAJOR,
             .minor_version = TESSELUNE_VERSION_MINOR,
             .num_params = static_cast<int>(DeclaredControls().size()),
             .explanation = "Breaks the picture into cells, squares or triangles, which can take "
                            "random sizes, drop out and be swept away"};
}

void f0r_get_param_info(f0r_param_info_t* info, int index) {
    if (IsControl(index)) {
        const Control& control = DeclaredControls()[static_cast<std::size_t>(index)];
        *info = {.name = control.name().c_str(),
                 .type = control.type(),
                 .explanation = control.explanation().c_str()};
    }
}

f0r_instance_t f0r_construct(unsigned int width, unsigned int height) {
    try {
        ComplainOfPadding(width);
        return width > 0 && height > 0 ? new Instance(width, height) : nullptr;
    } catch (const std::exception&) {
        return nullptr;
    }
}

void f0r_destruct(f0r_instance_t instance) {
    delete static_cast<Instance*>(instance);
}

void f0r_set_param_value(f0r_instance_t instance, f0r_param_t param, int index) {
    if (IsControl(index)) {
        InstanceOf(instance).setPosition(static_cast<std::size_t>(index), PositionIn(param));
    }
}

void f0r_get_param_value(f0r_instance_t instance, f0r_param_t param, int index) {
    if (IsControl(index)) {
        PositionIn(param) = InstanceOf(instance).position(static_cast<std::size_t>(index));
    }
}

void f0r_update(f0r_instance_t instance, double time, const uint32_t* inframe, uint32_t* outframe) {
    Instance& called = InstanceOf(instance);
    const HostFrame frame = called.frameAt(inframe, outframe);
    try {
        called.update(time, frame, *Adapters::SharedRenderer::get());
    } catch (const std::exception& error) {
        PassThrough(frame);
        Adapters::Complain(std::string("frames pass unchanged: ") + error.what());
    }
}
