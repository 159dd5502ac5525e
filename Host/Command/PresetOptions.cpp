#include "Host/Command/PresetOptions.h"

#include "Host/Command/ValueTypes.h"
#include "Host/Pictures/ReplaceFile.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstddef>
#include <fstream>
#include <ios>
#include <span>
#include <string>
#include <system_error>

namespace Kerovane::Host {

namespace {

std::string ContentOf(const std::filesystem::path& path) {
    constexpr std::size_t kMegabytes = 4; // some hundred thousand keys
    constexpr std::size_t kMost = kMegabytes << 20U;
    std::ifstream file(path, std::ios::binary);
    std::string content(kMost + 1, '\0');
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    if (!file.is_open() || file.bad()) {
        throw Error(fmt::format("cannot read '{}': {}", path.string(),
                                std::generic_category().message(errno)));
    }
    content.resize(static_cast<std::size_t>(file.gcount()));
    if (content.size() > kMost) {
        throw Error(
            fmt::format("cannot read '{}': it is larger than {} MB", path.string(), kMegabytes));
    }
    return content;
}

} // namespace

void PresetOptions::addTo(CLI::App& command) {
    command.add_option("--preset", mToLoad, "file with parameters; options win over it")
        ->type_name(kFileType)
        ->group("Presets");
    command.add_option("--save-preset", mToSave, "file to keep the parameters in")
        ->type_name(kFileType)
        ->group("Presets");
}

Preset PresetOptions::load(const FrameRenderer& renderer) const {
    if (mToLoad.empty()) {
        return {};
    }
    const std::string content = ContentOf(mToLoad);
    try {
        return ParsePreset(renderer.parameters(), content);
    } catch (const Error& error) {
        throw Error(fmt::format("'{}': {}", mToLoad.string(), error.what()));
    }
}

void PresetOptions::save(const FrameRenderer& renderer, const Preset& preset) const {
    if (!mToSave.empty()) {
        const std::string text = FormatPreset(renderer.parameters(), renderer.version(), preset);
        ReplaceFile(mToSave, std::as_bytes(std::span(text)));
    }
}

} // namespace Kerovane::Host
