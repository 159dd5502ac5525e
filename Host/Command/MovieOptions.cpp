#include "Host/Command/MovieOptions.h"

#include "Host/Command/ValueTypes.h"
#include "Host/Text/Error.h"
#include "Host/Text/NumberText.h"

#include <CLI/Validators.hpp>
#include <fmt/format.h>

#include <cmath>

namespace Kerovane::Host {

void MovieOptions::addTo(CLI::App& command) {
    const auto add = [&command](const char* name, auto& value, const std::string& type,
                                const std::string& text) {
        return command.add_option(name, value, text)->type_name(type)->group("Movies");
    };
    constexpr int kBest = 100;
    add("--codec", mCodec, ChoiceType(AllCodecNames()), "of the pictures [as OUT usually has]");
    add("--quality", mQuality, "N", "1 to 100, the best, whatever the codec [66]")
        ->check(CLI::Range(1, kBest).description(""));
    add("--bitrate", mBitRate, "BITS", "a second, instead of a quality: 8M, 800k");
    add("--bits", mBits, ChoiceType({"8", "10"}), "of a channel in OUT [8 in .mp4, else as IN has]")
        ->check(CLI::IsMember({8, 10}).description(""));
    add("--container", mContainer, "NAME", "FFmpeg's name of OUT's format: matroska, nut");
    add("--codec-options", mCodecOptions, "LIST", "the encoder's own: preset=ultrafast:tune=grain");
}

MovieSettings MovieOptions::settings() const {
    MovieSettings settings;
    settings.codec = mCodec;
    settings.container = mContainer;
    settings.codecOptions = mCodecOptions;
    if (mQuality != 0) {
        settings.quality = mQuality;
    }
    if (mBits != 0) {
        settings.bits = mBits;
    }
    if (!mBitRate.empty()) {
        if (mQuality != 0) {
            throw Error("--quality and --bitrate exclude each other");
        }
        settings.bitRate = ParseBitRate(mBitRate);
    }
    return settings;
}

std::string MovieOptions::given() const {
    return !mCodec.empty()          ? "--codec"
           : mQuality != 0          ? "--quality"
           : !mBitRate.empty()      ? "--bitrate"
           : mBits != 0             ? "--bits"
           : !mContainer.empty()    ? "--container"
           : !mCodecOptions.empty() ? "--codec-options"
                                    : "";
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
