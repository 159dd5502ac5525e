// An effect for tests of hosts. It copies the picture, or inverts it if Invert is on.
//
// Environment variables change it. FAKE_EFFECT names the one fault that it shows. FAKE_EFFECT_TRACE
// names a file that it writes the code of each command to. FAKE_EFFECT_SWITCHES lists names and
// adds a checkbox for each.

#include "AE_Effect.h"
#include "AE_EffectCBSuites.h"
#include "SPBasic.h"

#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>

namespace {

enum { kInput, kAmount, kRatio, kLevel, kTurn, kMode, kGroupStart, kGroupEnd, kInvert, kCount };

bool Shows(std::string_view fault) {
    const char* shown = std::getenv("FAKE_EFFECT");
    return shown != nullptr && fault == shown;
}

void Trace(PF_Cmd command) {
    if (const char* path = std::getenv("FAKE_EFFECT_TRACE")) {
        std::ofstream(path, std::ios::app) << command << ' ';
    }
}

template <std::size_t kSize>
void Copy(std::string_view text, A_char (&buffer)[kSize]) {
    buffer[text.copy(buffer, kSize - 1)] = '\0';
}

PF_Err Say(PF_OutData* out, std::string_view message) {
    Copy(message, out->return_msg);
    out->out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
    return PF_Err_NONE;
}

PF_Err GlobalSetup(PF_InData* in, PF_OutData* out) {
    if (Shows("setup error")) {
        return PF_Err_OUT_OF_MEMORY;
    }
    out->my_version = PF_VERSION(2, 3, 4, PF_Stage_BETA, 5);
    out->global_data = in->utils->host_new_handle(16);
    if (Shows("chatty")) {
        std::cerr << "fake effect on stderr\n";
        std::cout << "fake effect on stdout, flushed" << std::endl;
        std::cout << "fake effect on stdout, left to exit";
    }
    return PF_Err_NONE;
}

PF_Err GlobalSetdown(PF_InData* in) {
    in->utils->host_dispose_handle(in->global_data);
    return PF_Err_NONE;
}

class Definition {
public:
    Definition(A_long id, PF_ParamType type, const char* name) {
        mDef.uu.id = Shows("disk id used twice") ? 7 : id;
        mDef.param_type = Shows("unknown type") ? PF_ParamType{PF_Param_COLOR} : type;
        Copy(name, mDef.name);
    }
    PF_ParamDefUnion* operator->() { return &mDef.u; }
    PF_Err addTo(PF_InData* in) { return in->inter.add_param(in->effect_ref, -1, &mDef); }

private:
    PF_ParamDef mDef{};
};

PF_Err AddSwitches(PF_InData* in, PF_OutData* out) {
    const char* names = std::getenv("FAKE_EFFECT_SWITCHES");
    std::istringstream words(names != nullptr ? names : "");
    for (std::string name; words >> name; ++out->num_params) {
        if (const PF_Err error =
                Definition(100 + out->num_params, PF_Param_CHECKBOX, name.c_str()).addTo(in)) {
            return error;
        }
    }
    return PF_Err_NONE;
}

PF_Err ParamsSetup(PF_InData* in, PF_OutData* out) {
    out->num_params = Shows("parameter left out") ? kCount + 1 : kCount;
    Definition amount(kAmount, PF_Param_SLIDER, "Amount (px)");
    amount->sd = {.value = 3,
                  .value_str = "",
                  .value_desc = "",
                  .valid_min = -10,
                  .valid_max = 100,
                  .slider_min = 0,
                  .slider_max = 50,
                  .dephault = Shows("default outside") ? 101 : 3};
    Definition ratio(kRatio, PF_Param_FLOAT_SLIDER, "Ratio");
    ratio->fs_d.valid_min = ratio->fs_d.slider_min = 0.1F;
    ratio->fs_d.valid_max = ratio->fs_d.slider_max = 0.9F;
    ratio->fs_d.dephault = 0.3F;
    Definition level(kLevel, PF_Param_FIX_SLIDER, "Level");
    level->fd.valid_max = level->fd.slider_max = 100 << 16;
    level->fd.display_flags = PF_ValueDisplayFlag_PERCENT;
    Definition turn(kTurn, PF_Param_ANGLE, "Turn");
    Definition mode(kMode, PF_Param_POPUP, "Depth"); // the command has an option of that name
    mode->pd.num_choices = Shows("choices mismatch") ? 4 : 3;
    mode->pd.dephault = 2;
    mode->pd.u.namesptr = "One|Number Two|3rd!";
    Definition invert(kInvert, PF_Param_CHECKBOX, "");
    invert->bd.u.nameptr = "Invert";
    Definition start(kGroupStart, PF_Param_GROUP_START, "");
    Definition end(kGroupEnd, PF_Param_GROUP_END, "");
    for (Definition* definition : {&amount, &ratio, &level, &turn, &mode, &start, &end, &invert}) {
        if (const PF_Err error = definition->addTo(in)) {
            return error;
        }
    }
    return AddSwitches(in, out);
}

PF_Err ReportFrame(PF_InData* in, PF_OutData* out) {
    std::ostringstream text;
    text << "time " << in->current_time << '/' << in->time_scale << " step " << in->time_step
         << " downsample " << in->downsample_x.num << '/' << in->downsample_y.den << " size "
         << in->width << 'x' << in->height << " aspect " << in->pixel_aspect_ratio.num << '/'
         << in->pixel_aspect_ratio.den;
    return Say(out, text.str());
}

template <typename Pixel, typename Channel>
void CopyRow(const char* from, char* to, A_long width, bool invert, Channel white) {
    const auto* in = reinterpret_cast<const Pixel*>(from);
    auto* out = reinterpret_cast<Pixel*>(to);
    for (A_long x = 0; x < width; ++x) {
        out[x] = in[x];
        if (invert) {
            out[x].red = static_cast<Channel>(white - in[x].red);
            out[x].green = static_cast<Channel>(white - in[x].green);
            out[x].blue = static_cast<Channel>(white - in[x].blue);
        }
    }
}

PF_Err Render(PF_InData* in, PF_OutData* out, PF_ParamDef** params, PF_LayerDef* output) {
    if (Shows("render error")) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    if (Shows("render message")) {
        return Say(out, "first line\rsecond line");
    }
    if (Shows("render exception")) {
        throw std::runtime_error("thrown by the fake effect");
    }
    if (Shows("render throws a number")) {
        throw 13;
    }
    if (Shows("slow")) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    if (Shows("report frame")) {
        return ReportFrame(in, out);
    }
    const void* suite = nullptr;
    if (in->pica_basicP->AcquireSuite("PF World Suite", 2, &suite) != kSPNoError) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    const PF_LayerDef& input = params[kInput]->u.ld;
    PF_PixelFormat format = 0;
    static_cast<const PF_WorldSuite2*>(suite)->PF_GetPixelFormat(&input, &format);
    in->pica_basicP->ReleaseSuite("PF World Suite", 2);

    PF_ParamDef invert{};
    in->inter.checkout_param(in->effect_ref, kInvert, in->current_time, in->time_step,
                             in->time_scale, &invert);
    for (A_long y = 0; y < output->height; ++y) {
        if (y == 1 && Shows("render error after a row")) {
            return PF_Err_BAD_CALLBACK_PARAM;
        }
        const char* from =
            reinterpret_cast<const char*>(input.data) + std::ptrdiff_t{y} * input.rowbytes;
        char* to = reinterpret_cast<char*>(output->data) + std::ptrdiff_t{y} * output->rowbytes;
        const bool on = invert.u.bd.value != 0;
        if (format == PF_PixelFormat_ARGB32) {
            CopyRow<PF_Pixel8, A_u_char>(from, to, output->width, on, 255);
        } else if (format == PF_PixelFormat_ARGB64) {
            CopyRow<PF_Pixel16, A_u_short>(from, to, output->width, on, 32768);
        } else {
            CopyRow<PF_PixelFloat, float>(from, to, output->width, on, 1.0F);
        }
    }
    return in->inter.checkin_param(in->effect_ref, &invert);
}

} // namespace

extern "C" __attribute__((visibility("default"))) PF_Err
EntryPointFunc(PF_Cmd command, PF_InData* in, PF_OutData* out, PF_ParamDef* params[],
               PF_LayerDef* output, void*) {
    Trace(command);
    switch (command) {
    case PF_Cmd_ABOUT:
        Copy("Fake\rAn effect for tests", out->return_msg);
        return PF_Err_NONE;
    case PF_Cmd_GLOBAL_SETUP:
        return GlobalSetup(in, out);
    case PF_Cmd_GLOBAL_SETDOWN:
        return GlobalSetdown(in);
    case PF_Cmd_PARAMS_SETUP:
        return ParamsSetup(in, out);
    case PF_Cmd_RENDER:
        return Render(in, out, params, output);
    default:
        return PF_Err_NONE;
    }
}
