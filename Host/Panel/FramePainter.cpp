#include "Host/Panel/FramePainter.h"

#include "Host/Frames/WorldView.h"
#include "Host/Parameters/ParameterSettings.h"

#include <chrono>

namespace Kerovane::Host {

void Draw(FrameRenderer& renderer, const Footage& footage, const Look& look, A_long frame,
          const World& in, World& out) {
    const FrameRate rate = footage.rate();
    const SecondsOfFrame secondsOf =
        footage.kind() == FootageKind::Movie
            ? SecondsOfFrame([&footage](double number) { return footage.secondsOf(number); })
            : SecondsOfFrame();
    renderer.render({.time = rate.timeOf(frame), .timeStep = rate.timeStep()},
                    ValuesOverTime(look.settings, rate, secondsOf), ViewOf(in), ViewOf(out),
                    look.renderer);
}

PaintedFrame Paint(FrameRenderer& renderer, Footage& footage, const Look& look, A_long frame) {
    using Clock = std::chrono::steady_clock;
    SharedPicture source = footage.frame(frame);
    const World& in = source->first().world;
    World out(in.depth(), in.width(), in.height());
    const Clock::time_point start = Clock::now();
    Draw(renderer, footage, look, frame, in, out);
    const std::chrono::duration<double, std::milli> taken = Clock::now() - start;
    if (footage.conversion() != nullptr) {
        footage.conversion()->apply(out);
    }
    return {.source = std::move(source), .world = std::move(out), .milliseconds = taken.count()};
}

} // namespace Kerovane::Host
