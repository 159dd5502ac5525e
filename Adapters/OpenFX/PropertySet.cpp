#include "Adapters/OpenFX/PropertySet.h"

#include "Adapters/OpenFX/Suites.h"

#include <fmt/format.h>

namespace Kerovane::OpenFX {

namespace {

std::string Request(const std::string& name) {
    return "the property " + name;
}

} // namespace

std::string PropertyOfClip(const char* property, Name clip) {
    return fmt::format("OfxImageClipProp{}_{}", property, clip);
}

void PropertySet::set(const std::string& name, const std::string& value, int index) const {
    Require(put(name, value, index), Request(name));
}

void PropertySet::set(const std::string& name, int value, int index) const {
    Require(put(name, value, index), Request(name));
}

void PropertySet::set(const std::string& name, double value, int index) const {
    Require(put(name, value, index), Request(name));
}

void PropertySet::set(const std::string& name, const OfxRectD& value) const {
    int index = 0;
    for (const double edge : {value.x1, value.y1, value.x2, value.y2}) {
        set(name, edge, index++);
    }
}

std::optional<std::string> PropertySet::text(Name name, int index) const {
    char* value = nullptr;
    const OfxStatus status = HostSuites().properties->propGetString(mHandle, name, index, &value);
    const bool isThere = status == kOfxStatOK && value != nullptr && *value != '\0';
    return isThere ? std::optional<std::string>(value) : std::nullopt;
}

std::optional<int> PropertySet::whole(Name name, int index) const {
    int value = 0;
    const OfxStatus status = HostSuites().properties->propGetInt(mHandle, name, index, &value);
    return status == kOfxStatOK ? std::optional(value) : std::nullopt;
}

std::optional<double> PropertySet::real(Name name, int index) const {
    double value = 0;
    const OfxStatus status = HostSuites().properties->propGetDouble(mHandle, name, index, &value);
    return status == kOfxStatOK ? std::optional(value) : std::nullopt;
}

std::optional<OfxPointD> PropertySet::point(Name name) const {
    const std::optional<double> x = real(name, 0);
    const std::optional<double> y = real(name, 1);
    return x && y ? std::optional(OfxPointD{*x, *y}) : std::nullopt;
}

std::optional<OfxRectI> PropertySet::wholeRect(Name name) const {
    const std::optional<int> edges[] = {whole(name, 0), whole(name, 1), whole(name, 2),
                                        whole(name, 3)};
    const auto& [x1, y1, x2, y2] = edges;
    return x1 && y1 && x2 && y2 ? std::optional(OfxRectI{*x1, *y1, *x2, *y2}) : std::nullopt;
}

void* PropertySet::pointer(Name name) const {
    void* value = nullptr;
    const OfxStatus status = HostSuites().properties->propGetPointer(mHandle, name, 0, &value);
    return status == kOfxStatOK ? value : nullptr;
}

OfxStatus PropertySet::put(const std::string& name, const std::string& value, int index) const {
    return HostSuites().properties->propSetString(mHandle, name.c_str(), index, value.c_str());
}

OfxStatus PropertySet::put(const std::string& name, int value, int index) const {
    return HostSuites().properties->propSetInt(mHandle, name.c_str(), index, value);
}

OfxStatus PropertySet::put(const std::string& name, double value, int index) const {
    return HostSuites().properties->propSetDouble(mHandle, name.c_str(), index, value);
}

} // namespace Kerovane::OpenFX
