#include "Host/Panel/CommandLines.h"

#include "Host/Parameters/KeyframeText.h"
#include "Host/Parameters/ParameterText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace Kerovane::Host {

namespace {

bool IsPlain(std::string_view word) {
    constexpr std::string_view kPlain = "-_=./,:%+@";
    return !word.empty() && std::ranges::all_of(word, [kPlain](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
               kPlain.find(c) != std::string_view::npos;
    });
}

std::string Quoted(std::string_view word) {
    if (IsPlain(word)) {
        return std::string(word);
    }
    std::string quoted = "'";
    for (const char c : word) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + '\'';
}

/// Whether the look has the parameter as the effect declares it.
bool IsDefault(const Parameter& parameter, const Look& look) {
    const auto found = look.settings.find(parameter.id());
    return found == look.settings.end() || found->second == Keyframes(parameter.defaultValue);
}

/// In frei0r's terms: its slider from 0 to 1, and from 2 on the value itself.
std::string Frei0rNumber(const Parameter& parameter, double value) {
    constexpr double kFirstInUnits = 2;
    constexpr double kTurn = 360;
    const bool isAngle = parameter.type() == PF_Param_ANGLE;
    if (isAngle && value < 0) {
        value += std::ceil(-value / kTurn) * kTurn;
    }
    if (value >= kFirstInUnits && parameter.type() != PF_Param_POPUP) {
        return fmt::format("{:.9g}", value);
    }
    const Interval range = isAngle ? Interval{0, kTurn} : parameter.slider;
    return fmt::format("{:.9g}", (value - range.min) / (range.max - range.min));
}

/// `yes` and `no` stand for a switch.
std::string Frei0rValue(const Parameter& parameter, double value, const char* yes, const char* no) {
    return parameter.type() == PF_Param_CHECKBOX ? (value != 0 ? yes : no)
                                                 : Frei0rNumber(parameter, value);
}

double FrameOf(double place, KeyUnit unit, FrameRate rate) {
    return unit == KeyUnit::Frames ? place : place * rate.timeScale() / rate.timeStep();
}

/// Keys as MLT reads them, counted from the first frame. Ways that it has otherwise are written
/// frame by frame.
std::string MeltKeys(const Parameter& parameter, const Keyframes& keyframes,
                     const Footage& footage) {
    const double first = footage.frames().front();
    std::vector<std::string> texts;
    const auto add = [&](double frame, double value, const char* way) {
        texts.push_back(fmt::format("{:.0f}{}={}", frame - first, way,
                                    Frei0rValue(parameter, value, "1", "0")));
    };
    const std::vector<Keyframe>& keys = keyframes.keys();
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const double frame = std::round(FrameOf(keys[i].place, keyframes.unit(), footage.rate()));
        const bool isHeld = keys[i].toNext == Interpolation::Hold;
        add(frame, keys[i].value, isHeld ? "|" : "");
        if (isHeld || keys[i].toNext == Interpolation::Linear || i + 1 == keys.size()) {
            continue;
        }
        const double next = FrameOf(keys[i + 1].place, keyframes.unit(), footage.rate());
        for (double between = frame + 1; between < next; ++between) {
            const double place =
                keyframes.unit() == KeyUnit::Frames
                    ? between
                    : between * footage.rate().timeStep() / footage.rate().timeScale();
            add(between, keyframes.at(place), "");
        }
    }
    return fmt::format("{}", fmt::join(texts, ";"));
}

Words WithFrames(const LineSetting& setting, Words words) {
    if (!setting.frames.empty()) {
        words.insert(words.end(), {"--frames", setting.frames});
    }
    words.insert(words.end(), setting.footageWords.begin(), setting.footageWords.end());
    return words;
}

void Append(Words& words, const Words& more) {
    words.insert(words.end(), more.begin(), more.end());
}

std::string InputOf(const Footage& footage) {
    return Quoted(footage.input().string());
}

/// A sequence's name as FFmpeg and MLT take it, where it has one '#'.
std::string PercentPattern(const Footage& footage) {
    std::string name = footage.input().string();
    const std::size_t first = name.find('#');
    if (first != std::string::npos) {
        const std::size_t count = name.find_first_not_of('#', first) - first;
        constexpr std::size_t kOne = 4;
        name.replace(first, std::min(count, name.size() - first),
                     fmt::format("%0{}d", count == 1 ? kOne : count));
    }
    return Quoted(name);
}

} // namespace

double ValueAt(const Parameter& parameter, const Look& look, const Footage& footage, double frame) {
    const auto found = look.settings.find(parameter.id());
    if (found == look.settings.end()) {
        return parameter.defaultValue;
    }
    const Keyframes& keyframes = found->second;
    return keyframes.at(keyframes.unit() == KeyUnit::Frames ? frame : footage.secondsOf(frame));
}

Words LookWords(const LineSetting& setting, const Look& look) {
    Words words{"--renderer", NameOf(look.renderer)};
    for (std::size_t i = 0; i < setting.parameters.size(); ++i) {
        const Parameter& parameter = setting.parameters[i];
        if (!parameter.hasValue() || IsDefault(parameter, look)) {
            continue;
        }
        const std::string text = FormatKeyframes(parameter, look.settings.at(parameter.id()));
        if (text.starts_with('-')) {
            words.push_back(fmt::format("--{}={}", setting.options[i], text));
        } else {
            words.insert(words.end(), {"--" + setting.options[i], text});
        }
    }
    return words;
}

Words StillWords(const LineSetting& setting, const Look& look, const Footage& footage,
                 A_long frame) {
    Words words{"render", footage.input().string(), "still.png"};
    if (footage.kind() != FootageKind::Picture) {
        words.insert(words.end(), {"--frames", std::to_string(frame)});
    }
    Append(words, setting.footageWords);
    if (footage.isDeep()) {
        words.insert(words.end(), {"--depth", "8"});
    }
    Append(words, LookWords(setting, look));
    return words;
}

Words ShotWords(const LineSetting& setting, const Look& look, const Footage&,
                const std::string& input, const std::string& output) {
    Words words = WithFrames(setting, {"render", input, output});
    Append(words, LookWords(setting, look));
    return words;
}

std::string ShellLine(const std::string& program, const Words& words) {
    std::string line = program;
    for (const std::string& word : words) {
        line += ' ' + Quoted(word);
    }
    return line;
}

std::string FfmpegLine(const LineSetting& setting, const Look& look, const Footage& footage,
                       A_long frame) {
    std::vector<std::string> values;
    for (const Parameter& parameter : setting.parameters) {
        if (parameter.hasValue()) {
            values.push_back(
                Frei0rValue(parameter, ValueAt(parameter, look, footage, frame), "y", "n"));
        }
    }
    const std::string filter = Quoted(fmt::format("frei0r=tesselune:{}", fmt::join(values, "|")));
    switch (footage.kind()) {
    case FootageKind::Picture:
        return fmt::format("ffmpeg -i {} -vf {} cells.png", InputOf(footage), filter);
    case FootageKind::Sequence:
        return fmt::format("ffmpeg -framerate {}/{} -start_number {} -i {} -vf {} cells.%04d.png",
                           footage.rate().timeScale(), footage.rate().timeStep(),
                           footage.frames().front(), PercentPattern(footage), filter);
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
    const std::string input =
        footage.kind() == FootageKind::Sequence
            ? PercentPattern(footage) + "?begin=" + std::to_string(footage.frames().front())
            : InputOf(footage);
    const bool isPicture = footage.kind() == FootageKind::Picture;
    return fmt::format("melt {}{} -filter frei0r.tesselune{} -consumer avformat:cells.{}", input,
                       isPicture ? " out=0" : "", properties,
                       isPicture ? "png" : "mp4 vcodec=libx264");
}

std::string GStreamerLine(const LineSetting& setting, const Look& look, const Footage& footage,
                          A_long frame) {
    std::string properties;
    for (const Parameter& parameter : setting.parameters) {
        if (parameter.hasValue() && !IsDefault(parameter, look)) {
            properties += fmt::format(
                " {}={}", TypedName(parameter.displayName()),
                Frei0rValue(parameter, ValueAt(parameter, look, footage, frame), "true", "false"));
        }
    }
    const bool isSequence = footage.kind() == FootageKind::Sequence;
    return fmt::format(
        "gst-launch-1.0 {} ! videoconvert ! frei0r-filter-tesselune{} ! videoconvert ! {}",
        isSequence ? fmt::format("multifilesrc location={} start-index={} "
                                 "caps=image/png,framerate={}/{} ! pngdec",
                                 PercentPattern(footage), footage.frames().front(),
                                 footage.rate().timeScale(), footage.rate().timeStep())
                   : fmt::format("filesrc location={} ! decodebin", InputOf(footage)),
        properties,
        footage.kind() == FootageKind::Picture ? "pngenc ! filesink location=cells.png"
                                               : "x264enc ! mp4mux ! filesink location=cells.mp4");
}

} // namespace Kerovane::Host
