#include "Host/Parameters/Preset.h"

#include "Host/Parameters/KeyframeText.h"
#include "Host/Parameters/ParameterText.h"
#include "Host/Parameters/VersionText.h"
#include "Host/Text/Error.h"
#include "Host/Text/JsonNumber.h"
#include "Host/Text/JsonText.h"
#include "Host/Text/NearestNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace Kerovane::Host {

namespace {

using Json = nlohmann::ordered_json;

Json JsonValue(const Parameter& parameter, const Keyframes& keyframes) {
    const bool isText = keyframes.keys().size() > 1 || parameter.type() == PF_Param_POPUP;
    const double value = keyframes.keys().front().value;
    if (isText) {
        return FormatKeyframes(parameter, keyframes);
    }
    return parameter.type() == PF_Param_CHECKBOX ? Json(value != 0) : JsonNumber(value);
}

/// Reads one preset and collects all its errors.
class PresetReader {
public:
    explicit PresetReader(const std::vector<Parameter>& parameters) : mParameters(parameters) {}

    Preset read(std::string_view text) {
        const Json preset = parse(text);
        checkEntries(preset, "", {"description", "effect", "renderer", "parameters"});
        const auto list = preset.find("parameters");
        if (list == preset.end() || !list->is_array()) {
            throw Error("has no list of \"parameters\"");
        }
        readDescription(preset);
        readRenderer(preset);
        for (std::size_t index = 0; index < list->size(); ++index) {
            readParameter((*list)[index], fmt::format("parameters[{}]", index));
        }
        if (!mProblems.empty()) {
            throw Error(fmt::format("{}", fmt::join(mProblems, "; ")));
        }
        return std::move(mRead);
    }

private:
    static Json parse(std::string_view text) {
        try {
            Json preset = Json::parse(text, checkDepth);
            if (!preset.is_object()) {
                throw Error("is no JSON object");
            }
            return preset;
        } catch (const Json::exception& error) {
            throw Error(fmt::format("is no JSON: {}", reasonOf(error)));
        }
    }

    /// Limits nesting, because the parser would otherwise recurse without bound.
    static bool checkDepth(int depth, Json::parse_event_t /*event*/, const Json& /*parsed*/) {
        constexpr int kDeepest = 16;
        if (depth > kDeepest) {
            throw Error(fmt::format("is nested more than {} deep", kDeepest));
        }
        return true;
    }

    /// Returns the part of the library's message from "at line" on, or else without the exception's
    /// name.
    static std::string_view reasonOf(const Json::exception& error) {
        constexpr std::string_view kNameEnd = "] ";
        const std::string_view text = error.what();
        const std::size_t place = text.find("at line");
        const std::size_t nameEnd = text.find(kNameEnd);
        return text.substr(place < text.size()     ? place
                           : nameEnd < text.size() ? nameEnd + kNameEnd.size()
                                                   : 0);
    }

    void readDescription(const Json& preset) {
        const auto entry = preset.find("description");
        if (entry == preset.end()) {
            return;
        }
        if (!entry->is_string()) {
            return complain("description", "is no text");
        }
        mRead.description = OneLine(entry->get<std::string>());
    }

    void readRenderer(const Json& preset) {
        const auto entry = preset.find("renderer");
        if (entry == preset.end()) {
            return;
        }
        try {
            mRead.renderer =
                ParseRenderer(entry->is_string() ? entry->get<std::string>() : entry->dump());
        } catch (const Error& error) {
            complain("renderer", error.what());
        }
    }

    void readParameter(const Json& entry, const std::string& place) {
        if (!entry.is_object()) {
            return complain(place, "is no JSON object");
        }
        checkEntries(entry, place + '.', {"name", "id", "value"});
        const Parameter* parameter = find(entry, place);
        if (parameter == nullptr) {
            return;
        }
        const auto value = entry.find("value");
        if (value == entry.end() || value->is_structured() || value->is_null()) {
            return complain(place, "has no value");
        }
        try {
            const std::string text = value->is_string() ? value->get<std::string>() : value->dump();
            if (!mRead.settings.emplace(parameter->id(), ParseKeyframes(*parameter, text)).second) {
                complain(place, fmt::format("sets {} again", parameter->displayName()));
            }
        } catch (const Error& error) {
            complain(place + ".value", error.what());
        }
    }

    const Parameter* find(const Json& entry, const std::string& place) {
        const auto name = entry.find("name");
        const auto id = entry.find("id");
        if (id != entry.end() && id->is_number_integer()) {
            const auto number = id->get<std::int64_t>();
            const auto diskId = static_cast<A_long>(number);
            const Parameter* parameter = FindParameter(mParameters, diskId);
            if (diskId != number || parameter == nullptr || !parameter->hasValue()) {
                complain(place + ".id", fmt::format("names no parameter: {}", id->dump()));
            } else if (name != entry.end() && *name != parameter->displayName()) {
                complain(place, fmt::format("has the name {}, and the id {} is that of \"{}\"",
                                            name->dump(), id->dump(), parameter->displayName()));
            } else {
                return parameter;
            }
        } else if (name != entry.end() && name->is_string()) {
            return findByName(name->get<std::string>(), place);
        } else {
            complain(place, "has no name and no id");
        }
        return nullptr;
    }

    const Parameter* findByName(const std::string& name, const std::string& place) {
        std::vector<std::string> names;
        for (const Parameter& parameter : mParameters) {
            if (parameter.hasValue() && parameter.displayName() == name) {
                return &parameter;
            }
            names.push_back(parameter.displayName());
        }
        complain(place + ".name",
                 fmt::format("names no parameter: \"{}\"{}", name, Suggestion(name, names)));
        return nullptr;
    }

    void checkEntries(const Json& object, const std::string& place,
                      const std::vector<std::string>& known) {
        for (const auto& [name, value] : object.items()) {
            if (std::ranges::find(known, name) == known.end()) {
                complain(place + name, "is unknown" + Suggestion(name, known));
            }
        }
    }

    void complain(const std::string& place, std::string_view problem) {
        mProblems.push_back(fmt::format("{} {}", place, problem));
    }

    const std::vector<Parameter>& mParameters;
    Preset mRead;
    std::vector<std::string> mProblems;
};

Json PresetJson(const std::vector<Parameter>& parameters, A_u_long version, const Preset& preset) {
    Json list = Json::array();
    for (const Parameter& parameter : parameters) {
        if (!parameter.hasValue()) {
            continue;
        }
        const auto set = preset.settings.find(parameter.id());
        const Keyframes keyframes =
            set != preset.settings.end() ? set->second : Keyframes(parameter.defaultValue);
        list.push_back({{"name", parameter.displayName()},
                        {"id", parameter.id()},
                        {"value", JsonValue(parameter, keyframes)}});
    }
    Json text{{"effect", {{"version", VersionText(version)}}}};
    if (preset.renderer) {
        text["renderer"] = NameOf(*preset.renderer);
    }
    text["parameters"] = std::move(list);
    return text;
}

} // namespace

std::string FormatPreset(const std::vector<Parameter>& parameters, A_u_long version,
                         const Preset& preset) {
    return JsonText(PresetJson(parameters, version, preset));
}

std::string FormatRecord(const std::vector<Parameter>& parameters, A_u_long version,
                         const Preset& preset) {
    return PresetJson(parameters, version, preset).dump();
}

Preset ParsePreset(const std::vector<Parameter>& parameters, std::string_view json) {
    return PresetReader(parameters).read(json);
}

} // namespace Kerovane::Host
