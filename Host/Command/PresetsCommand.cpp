#include "Host/Command/Commands.h"
#include "Host/Command/PresetOptions.h"
#include "Host/Command/ShippedPresets.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <vector>

namespace Kerovane::Host {

namespace {

std::string PresetList(const FrameRenderer& renderer) {
    const std::vector<ShippedPreset> presets = ShippedPresets();
    if (presets.empty()) {
        throw Error("no presets are installed with the command");
    }
    std::size_t width = 0;
    for (const ShippedPreset& preset : presets) {
        width = std::max(width, preset.name.size() + 2);
    }
    std::string list;
    for (const ShippedPreset& preset : presets) {
        list += fmt::format("{:{}}{}\n", preset.name, width,
                            ReadPreset(preset.file, renderer).description);
    }
    return list;
}

void SetUp(CLI::App& command, CommandContext& context) {
    command.footer("Example:\n  tesselune render photo.jpg cells.png --preset low-poly");
    command.callback([&context] { context.streams().print(PresetList(context.renderer())); });
}

const CommandRegistration kPresets({.name = "presets",
                                    .description = "List the presets that --preset takes by name",
                                    .setUp = SetUp});

} // namespace

} // namespace Kerovane::Host
