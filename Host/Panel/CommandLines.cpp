#include "Host/Panel/CommandLines.h"

#include "Host/Parameters/KeyframeText.h"

#include <fmt/format.h>

#include <algorithm>
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

} // namespace

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

bool IsDefault(const Parameter& parameter, const Look& look) {
    const auto found = look.settings.find(parameter.id());
    return found == look.settings.end() || found->second == Keyframes(parameter.defaultValue);
}

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
    if (footage.conversion() != nullptr) {
        words.insert(words.end(), {"--bits", "8"});
    } else if (footage.isDeep()) {
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

} // namespace Kerovane::Host
