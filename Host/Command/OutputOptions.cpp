#include "Host/Command/OutputOptions.h"

#include "Host/Command/ReadOption.h"
#include "Host/Command/ValueTypes.h"
#include "Host/Text/Choice.h"
#include "Host/Text/NumberText.h"

#include <CLI/Validators.hpp>
#include <fmt/format.h>

#include <cmath>
#include <cstddef>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

namespace {

/// Returns the names that --channels takes. pictures() relies on their order: grey before colour,
/// and each name without alpha before the one with alpha.
const std::vector<std::string>& ChannelNames() {
    static const std::vector<std::string> kNames{"grey", "grey-alpha", "rgb", "rgba"};
    return kNames;
}

/// Returns the index of an option's text in `names`. Throws Error, which names the option, if
/// `names` lacks the text.
std::size_t ReadChoice(const char* option, const std::string& text,
                       const std::vector<std::string>& names) {
    return ReadOption(option, text,
                      [&names](const std::string& word) { return PlaceAmong(names, word); });
}

/// Reads a compression, such as "zip", and its level if one is given, such as "zip:4".
void ParseCompression(std::string_view text, PictureSettings& settings) {
    const std::size_t colon = text.find(':');
    settings.compression = text.substr(0, colon);
    if (colon != std::string_view::npos) {
        settings.compressionLevel = ParseWhole(text.substr(colon + 1));
        if (!settings.compressionLevel) {
            throw Error(fmt::format("--compression takes NAME or NAME:LEVEL, not '{}'", text));
        }
    }
}

} // namespace

void OutputOptions::addTo(CLI::App& command) {
    const auto add = [&command](const char* group, const char* name, auto& value,
                                const std::string& type, const std::string& text) {
        return command.add_option(name, value, text)->type_name(type)->group(group);
    };
    constexpr int kBest = 100;
    add("Output", "--bits", mBits, ChoiceType(ChannelBitsNames()),
        "bits per channel; movies have 8 or 10 [as IN, 8 in .mp4]");
    add("Output", "--quality", mQuality, "N", "1 to 100 (best), for lossy formats [66 for movies]")
        ->check(CLI::Range(1, kBest).description(""));
    add("Output", "--channels", mChannels, ChoiceType(ChannelNames()),
        "channels of pictures [as IN, with alpha if there can be holes]");
    add("Output", "--compression", mCompression, "NAME[:LEVEL]",
        "compression of pictures: zip:9, dwaa:45, lossless [as IN]");
    add("Movies", "--codec", mCodec, ChoiceType(AllCodecNames()),
        "video codec [the usual one of OUT]");
    add("Movies", "--bitrate", mBitRate, "BITS", "bits per second instead of a quality: 8M, 800k");
    add("Movies", "--container", mContainer, "NAME",
        "format of OUT by FFmpeg's name: matroska, nut");
    add("Movies", "--codec-options", mCodecOptions, "LIST",
        "options of the encoder: preset=ultrafast:tune=grain");
}

MovieSettings OutputOptions::movie() const {
    MovieSettings settings;
    settings.codec = mCodec;
    settings.container = mContainer;
    settings.codecOptions = mCodecOptions;
    if (mQuality != 0) {
        settings.quality = mQuality;
    }
    if (!mBits.empty()) {
        static const std::vector<std::string> kNames{"8", "10"};
        settings.bits = ReadChoice("--bits of a movie", mBits, kNames) == 0 ? 8 : 10;
    }
    if (!mBitRate.empty()) {
        if (mQuality != 0) {
            throw Error("--quality and --bitrate exclude each other");
        }
        settings.bitRate = ParseBitRate(mBitRate);
    }
    return settings;
}

PictureSettings OutputOptions::pictures() const {
    PictureSettings settings;
    if (!mChannels.empty()) {
        const std::size_t place = ReadChoice("--channels", mChannels, ChannelNames());
        settings.channels = {.isGrey = place < 2, .hasAlpha = place % 2 == 1};
    }
    if (!mBits.empty()) {
        settings.bits = static_cast<ChannelBits>(ReadChoice("--bits", mBits, ChannelBitsNames()));
    }
    if (mQuality != 0) {
        settings.quality = mQuality;
    }
    if (!mCompression.empty()) {
        ParseCompression(mCompression, settings);
    }
    return settings;
}

std::string OutputOptions::givenForMovies() const {
    return !mCodec.empty()          ? "--codec"
           : !mBitRate.empty()      ? "--bitrate"
           : !mContainer.empty()    ? "--container"
           : !mCodecOptions.empty() ? "--codec-options"
                                    : "";
}

std::string OutputOptions::givenForPictures() const {
    return !mChannels.empty() ? "--channels" : !mCompression.empty() ? "--compression" : "";
}

std::int64_t ParseBitRate(const std::string& text) {
    constexpr double kThousand = 1000;
    constexpr double kMost = 1e10;
    std::string digits = text;
    double unit = 1;
    if (!digits.empty() && (digits.back() == 'k' || digits.back() == 'M')) {
        unit = digits.back() == 'k' ? kThousand : kThousand * kThousand;
        digits.pop_back();
    }
    const double rate = ParseNumber(digits).value_or(0) * unit;
    if (!(rate >= kThousand && rate <= kMost)) {
        throw Error(fmt::format("--bitrate takes bits a second, like 8M or 800k, not '{}'", text));
    }
    return std::llround(rate);
}

} // namespace Kerovane::Host
