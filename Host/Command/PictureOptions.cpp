#include "Host/Command/PictureOptions.h"

#include "Host/Command/ValueTypes.h"

#include <CLI/Validators.hpp>

#include <limits>

namespace Kerovane::Host {

namespace {

template <typename Value>
CLI::Option* Add(CLI::App& command, const char* name, Value& value, const std::string& type,
                 const std::string& text) {
    return command.add_option(name, value, text)->type_name(type)->group("Pictures");
}

} // namespace

void PictureOptions::addTo(CLI::App& command) {
    Add(command, "--layer", mLayer, "NAME",
        "the only colour layer to work on: diffuse for diffuse.R");
    Add(command, "--part", mPart, "N", "the only view or page to work on, counted from 0")
        ->check(CLI::Range(0, std::numeric_limits<int>::max()).description(""));
    Add(command, "--convert", mConvert, "FROM TO",
        "colour spaces of IN and OUT, such as linear sRGB; as named in $OCIO");
}

void PictureOptions::addOverscanTo(CLI::App& command) {
    Add(command, "--overscan", mOverscan, ChoiceType({"keep"}),
        "leave pixels outside the display window as they are")
        ->check(CLI::IsMember({"keep"}).description(""));
}

void PictureOptions::set(ReadSetting& setting) const {
    setting.choice = {.layer = mLayer, .part = mPart};
    setting.keepOverscan = !mOverscan.empty();
    if (!mConvert.first.empty() && !setting.depth) {
        setting.depth = Depth::Float32; // converting 8-bit colour would lose levels
    }
}

std::optional<ColourConversion> PictureOptions::conversion() const {
    return mConvert.first.empty()
               ? std::nullopt
               : std::optional<ColourConversion>(std::in_place, mConvert.first, mConvert.second);
}

std::vector<std::string> PictureOptions::words() const {
    std::vector<std::string> words;
    if (!mLayer.empty()) {
        words.insert(words.end(), {"--layer", mLayer});
    }
    if (mPart) {
        words.insert(words.end(), {"--part", std::to_string(*mPart)});
    }
    if (!mConvert.first.empty()) {
        words.insert(words.end(), {"--convert", mConvert.first, mConvert.second});
    }
    return words;
}

std::string PictureOptions::givenForPictures() const {
    return !mLayer.empty() ? "--layer" : mPart ? "--part" : !mOverscan.empty() ? "--overscan" : "";
}

} // namespace Kerovane::Host
