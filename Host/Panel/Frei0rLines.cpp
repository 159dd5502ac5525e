#include "Host/Panel/Frei0rLines.h"

#include "Host/Parameters/ParameterText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace Kerovane::Host {

namespace {

/// Which numbers a program passes to frei0r.
enum class Frei0rReach {
    /// From 0 to 1 positions on the slider, and from 2 on values in the parameter's unit.
    All,
    /// Only positions on the slider, from 0 to 1. Values beyond the slider are moved to its end.
    Positions
};

constexpr double kTurn = 360;

bool IsAngle(const Parameter& parameter) {
    return parameter.type() == PF_Param_ANGLE;
}

/// Returns the range of values that frei0r's numbers from 0 to 1 cover.
Interval Frei0rRange(const Parameter& parameter) {
    return IsAngle(parameter) ? Interval{0, kTurn} : parameter.slider;
}

std::string Frei0rNumber(const Parameter& parameter, double value, Frei0rReach reach) {
    constexpr double kFirstInUnits = 2;
    if (reach == Frei0rReach::All && value >= kFirstInUnits && parameter.type() != PF_Param_POPUP) {
        return fmt::format("{:.9g}", value);
    }
    const Interval range = Frei0rRange(parameter);
    return fmt::format("{:.9g}",
                       std::clamp((value - range.min) / (range.max - range.min), 0.0, 1.0));
}

double WithinATurn(double degrees) {
    return degrees - std::floor(degrees / kTurn) * kTurn;
}

/// A program's words for a switch that is on and off.
struct SwitchWords {
    const char* on;
    const char* off;
};

std::string Frei0rValue(const Parameter& parameter, double value, const SwitchWords& words,
                        Frei0rReach reach = Frei0rReach::All) {
    if (parameter.type() == PF_Param_CHECKBOX) {
        return value != 0 ? words.on : words.off;
    }
    return Frei0rNumber(parameter, IsAngle(parameter) ? WithinATurn(value) : value, reach);
}

/**
 * Writes a parameter's keys for hosts that interpolate between the numbers. Then all keys must be
 * positions on the slider, or all must be values.
 */
class Frei0rKeys {
public:
    Frei0rKeys(const Parameter& parameter, const std::vector<Keyframe>& keys)
        : mParameter(parameter) {
        const auto [low, high] = std::ranges::minmax(keys, {}, &Keyframe::value);
        const Interval range = Frei0rRange(parameter);
        if (IsAngle(parameter)) {
            mShift = WithinATurn(low.value) - low.value; // whole turns, which make no difference
        }
        const bool isWithin =
            range.contains(low.value + mShift) && range.contains(high.value + mShift);
        mReach = isWithin ? Frei0rReach::Positions : Frei0rReach::All;
        if (IsAngle(parameter) && !isWithin) {
            mShift += kTurn; // one more, so that no number is read as a position
        }
    }

    std::string text(double value) const {
        return mParameter.type() == PF_Param_CHECKBOX
                   ? (value != 0 ? "1" : "0")
                   : Frei0rNumber(mParameter, value + mShift, mReach);
    }

private:
    const Parameter& mParameter;
    double mShift = 0;
    Frei0rReach mReach = Frei0rReach::Positions;
};

double FrameOf(double place, KeyUnit unit, FrameRate rate) {
    return unit == KeyUnit::Frames ? place : place * rate.timeScale() / rate.timeStep();
}

/// Returns keys in MLT's syntax, counted from the first frame. Writes interpolations that MLT
/// lacks frame by frame.
std::string MeltKeys(const Parameter& parameter, const Keyframes& keyframes,
                     const Footage& footage) {
    const double first = footage.frames().front();
    const double last = footage.frames().back();
    const Frei0rKeys written(parameter, keyframes.keys());
    std::vector<std::string> texts;
    const auto add = [&](double frame, double value, const char* way) {
        texts.push_back(fmt::format("{:.0f}{}={}", frame - first, way, written.text(value)));
    };
    const std::vector<Keyframe>& keys = keyframes.keys();
    if (keys.size() == 1) {
        return Frei0rValue(parameter, keys.front().value, {"1", "0"});
    }
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const double frame = std::round(FrameOf(keys[i].place, keyframes.unit(), footage.rate()));
        const bool isHeld = keys[i].toNext == Interpolation::Hold;
        add(frame, keys[i].value, isHeld ? "|" : "");
        if (isHeld || keys[i].toNext == Interpolation::Linear || i + 1 == keys.size()) {
            continue;
        }
        const double next =
            std::min(FrameOf(keys[i + 1].place, keyframes.unit(), footage.rate()), last + 1);
        const auto from = static_cast<A_long>(std::clamp(frame + 1, first, last + 1));
        for (A_long between = from; between < next; ++between) {
            const double place = keyframes.unit() == KeyUnit::Frames
                                     ? between
                                     : static_cast<double>(between) * footage.rate().timeStep() /
                                           footage.rate().timeScale();
            add(between, keyframes.at(place), "");
        }
    }
    return fmt::format("{}", fmt::join(texts, ";"));
}

/// Returns a profile with the footage's size and rate. MLT would otherwise scale pictures to a
/// profile of its own.
std::string MeltProfile(const Footage& footage) {
    return fmt::format(
        "description=cells width={0} height={1} display_aspect_num={0} display_aspect_den={1} "
        "sample_aspect_num=1 sample_aspect_den=1 frame_rate_num={2} "
        "frame_rate_den={3} progressive=1 colorspace=709",
        footage.width(), footage.height(), footage.rate().timeScale(), footage.rate().timeStep());
}

std::string InputOf(const Footage& footage) {
    return Quoted(footage.input().string());
}

/// Returns a sequence's name with its placeholder in the form "%04d", which FFmpeg, MLT and
/// GStreamer understand.
std::string PercentPattern(const Footage& footage) {
    constexpr std::size_t kDigitsOfOneHash = 4;
    std::string name = footage.input().string();
    const std::size_t start = name.find_first_of("#@$", name.rfind('/') + 1);
    if (start == std::string::npos) {
        return name; // has this form already, or has no placeholder
    }
    const bool isLetter = name.compare(start, 2, "$F") == 0;
    const std::size_t end = std::min(isLetter ? name.find_first_not_of("0123456789", start + 2)
                                              : name.find_first_not_of(name[start], start),
                                     name.size());
    const std::size_t count = end - start;
    const std::string digits =
        isLetter ? name.substr(start + 2, count - 2)
                 : std::to_string(name[start] == '#' && count == 1 ? kDigitsOfOneHash : count);
    name.replace(start, count, digits.empty() ? "%d" : fmt::format("%0{}d", digits));
    return name;
}

} // namespace

std::string FfmpegLine(const LineSetting& setting, const Look& look, const Footage& footage,
                       A_long frame) {
    std::vector<std::string> values;
    for (const Parameter& parameter : setting.parameters) {
        if (parameter.hasValue()) {
            values.push_back(
                Frei0rValue(parameter, ValueAt(parameter, look, footage, frame), {"y", "n"}));
        }
    }
    const std::string filter = Quoted(fmt::format("frei0r=tesselune:{}", fmt::join(values, "|")));
    switch (footage.kind()) {
    case FootageKind::Picture:
        return fmt::format("ffmpeg -i {} -vf {} cells.png", InputOf(footage), filter);
    case FootageKind::Sequence:
        return fmt::format("ffmpeg -framerate {}/{} -start_number {} -i {} -vf {} cells.%04d.png",
                           footage.rate().timeScale(), footage.rate().timeStep(),
                           footage.frames().front(), Quoted(PercentPattern(footage)), filter);
    default:
        return fmt::format("ffmpeg -i {} -vf {} -c:v libx264 -pix_fmt yuv420p cells.mp4",
                           InputOf(footage), filter);
    }
}

std::string MeltLine(const LineSetting& setting, const Look& look, const Footage& footage) {
    std::string properties;
    std::size_t number = 0;
    for (const Parameter& parameter : setting.parameters) {
        if (!parameter.hasValue()) {
            continue;
        }
        if (!IsDefault(parameter, look)) {
            properties +=
                fmt::format(" {}={}", number,
                            Quoted(MeltKeys(parameter, look.settings.at(parameter.id()), footage)));
        }
        ++number;
    }
    const std::string filter = "-filter frei0r.tesselune" + properties;
    if (footage.kind() == FootageKind::Movie) {
        return fmt::format("melt {} {} -consumer avformat:cells.mp4 vcodec=libx264",
                           InputOf(footage), filter);
    }
    const bool isPicture = footage.kind() == FootageKind::Picture;
    const std::string input =
        isPicture ? InputOf(footage) + " out=0"
                  : fmt::format("{} out={}",
                                Quoted(fmt::format("pixbuf:{}?begin={}", PercentPattern(footage),
                                                   footage.frames().front())),
                                footage.frames().size() - 1);
    return fmt::format("printf '%s\\n' {} > cells.profile && melt -profile cells.profile {} {} "
                       "-consumer avformat:cells.%d.png vcodec=png pix_fmt=rgba "
                       "mlt_image_format=rgba real_time=-1",
                       MeltProfile(footage), input, filter);
}

std::string GStreamerLine(const LineSetting& setting, const Look& look, const Footage& footage,
                          A_long frame) {
    std::string properties;
    for (const Parameter& parameter : setting.parameters) {
        if (parameter.hasValue() && !IsDefault(parameter, look)) {
            properties +=
                fmt::format(" {}={}", TypedName(parameter.displayName()),
                            Frei0rValue(parameter, ValueAt(parameter, look, footage, frame),
                                        {"true", "false"}, Frei0rReach::Positions));
        }
    }
    const std::string filter =
        fmt::format(" ! videoconvert ! frei0r-filter-tesselune{} ! videoconvert ! ", properties);
    const std::string file =
        fmt::format("gst-launch-1.0 filesrc location={} ! decodebin", InputOf(footage));
    switch (footage.kind()) {
    case FootageKind::Picture:
        return file + filter + "pngenc ! filesink location=cells.png";
    case FootageKind::Sequence:
        return fmt::format("gst-launch-1.0 multifilesrc location={} start-index={} "
                           "caps=image/png,framerate={}/{} ! pngdec{}pngenc ! "
                           "multifilesink location=cells.%04d.png",
                           Quoted(PercentPattern(footage)), footage.frames().front(),
                           footage.rate().timeScale(), footage.rate().timeStep(), filter);
    default:
        return file + filter + "vp9enc ! webmmux ! filesink location=cells.webm";
    }
}

} // namespace Kerovane::Host
