#include "Host/Command/RenderCommand.h"

#include "Host/Drawable.h"
#include "Host/Pictures/PictureReader.h"
#include "Host/Pictures/PictureWriter.h"

#include <CLI/Validators.hpp>

#include <optional>

namespace Kerovane::Host {

void RenderCommand::addTo(CLI::App& command) {
    constexpr int kMaxDownsample = 64;
    command.add_option("IN", mIn, "picture to read")->required()->type_name("");
    command.add_option("OUT", mOut, "picture to write, its format as its extension says")
        ->required()
        ->type_name("");
    command.add_option("--depth", mDepth, "bits of a channel: 8, 16 or 32 [as IN has]")
        ->check(CLI::IsMember({8, 16, 32}).description(""))
        ->type_name("");
    command
        .add_option("--downsample", mDownsample,
                    "IN is a preview, reduced so many times: pixels in parameters follow [1]")
        ->check(CLI::Range(1, kMaxDownsample).description(""))
        ->type_name("");
    command.footer(
        "Example:\n  tesselune render photo.jpg cells.png --shape-type triangle --size 40");
}

void RenderCommand::addParametersTo(CLI::App& command, const Effect& effect) {
    mParameters.addTo(command, effect.parameters());
}

void RenderCommand::run(Effect& effect) const {
    const ParameterValues values = mParameters.values();
    const PictureWriter writer(mOut);
    const Picture picture =
        ReadPicture(mIn, mDepth != 0 ? std::optional(static_cast<Depth>(mDepth)) : std::nullopt);
    const World& input = picture.world;
    CheckDrawable(input.width(), input.height());
    World output(input.depth(), input.width(), input.height());
    Frame frame;
    frame.downsample = mDownsample;
    effect.render(frame, values, input, output);
    writer.write(output, picture.origin);
}

} // namespace Kerovane::Host
