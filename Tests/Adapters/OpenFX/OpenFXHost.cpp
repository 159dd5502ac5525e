#include "Tests/Adapters/OpenFX/OpenFXHost.h"

#define IMATH_HALF_NO_LOOKUP_TABLE
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <half.h>

#include <atomic>
#include <cmath>
#include <cstdarg>
#include <cstring>
#include <mutex>
#include <stdexcept>

namespace Kerovane::OpenFX {

namespace {

// State that the functions of all suites share.
std::atomic<int> calls = 0;
std::atomic<int> failingCall = 0;
std::atomic<int> openImageCount = 0;
std::mutex messageMutex;
std::vector<std::string> messages;

constexpr OfxStatus kUnknown = 3;
constexpr OfxStatus kBadHandle = 9;
constexpr OfxStatus kBadIndex = 10;
constexpr OfxStatus kBadValue = 11;

/// Counts a suite call, and returns the result of `work` unless this call was chosen to fail.
template <typename Work>
OfxStatus Counted(Work work) {
    return ++calls == failingCall ? kOfxStatFailed : work();
}

template <typename Object, typename Handle>
Object& As(Handle handle) {
    return *reinterpret_cast<Object*>(handle);
}

template <typename Type, typename Given>
OfxStatus Set(OfxPropertySetHandle set, const char* name, int index, Given value) {
    return Counted([&] { return As<Properties>(set).set(name, index, Type(value)); });
}

template <typename Type>
OfxStatus Get(OfxPropertySetHandle set, const char* name, int index, Type* result) {
    return Counted([&] {
        Value value = Type{};
        const OfxStatus status = As<Properties>(set).get(name, index, value);
        if (status == kOfxStatOK) {
            *result = std::get<Type>(value);
        }
        return status;
    });
}

OfxStatus GetString(OfxPropertySetHandle set, const char* name, int index, char** result) {
    thread_local std::string text; // the host owns the text until the next call
    const OfxStatus status = Get(set, name, index, &text);
    *result = text.data();
    return status;
}

const OfxPropertySuiteV1 kProperties = [] {
    OfxPropertySuiteV1 suite{}; // unused functions stay null
    suite.propSetPointer = Set<void*, void*>;
    suite.propSetString = Set<std::string, const char*>;
    suite.propSetDouble = Set<double, double>;
    suite.propSetInt = Set<int, int>;
    suite.propGetPointer = Get<void*>;
    suite.propGetString = GetString;
    suite.propGetDouble = Get<double>;
    suite.propGetInt = Get<int>;
    return suite;
}();

/// Returns the properties that a description may set.
Properties Described(std::initializer_list<Name> texts, std::initializer_list<Name> numbers) {
    Properties properties;
    for (const Name name : texts) {
        properties.declare(name, {std::string()});
    }
    for (const Name name : numbers) {
        properties.declare(name, {-1});
    }
    return properties;
}

Properties ClipDescription() {
    return Described({kOfxImageEffectPropSupportedComponents, kOfxImageClipPropFieldExtraction},
                     {kOfxImageEffectPropSupportsTiles, kOfxImageEffectPropTemporalClipAccess});
}

Properties EffectDescription() {
    return Described(
        {kOfxPropLabel, kOfxPropShortLabel, kOfxPropLongLabel, kOfxImageEffectPluginPropGrouping,
         kOfxPropPluginDescription, kOfxPropVersionLabel, kOfxPropIcon,
         kOfxImageEffectPropSupportedContexts, kOfxImageEffectPropSupportedPixelDepths,
         kOfxImageEffectPluginRenderThreadSafety, kOfxImageEffectPropClipPreferencesSlaveParam},
        {kOfxPropVersion, kOfxImageEffectPluginPropSingleInstance,
         kOfxImageEffectPluginPropHostFrameThreading,
         kOfxImageEffectPluginPropFieldRenderTwiceAlways,
         kOfxImageEffectPropSupportsMultiResolution, kOfxImageEffectPropSupportsTiles,
         kOfxImageEffectPropTemporalClipAccess, kOfxImageEffectPropSupportsMultipleClipDepths,
         kOfxImageEffectPropSupportsMultipleClipPARs});
}

Properties ParamDescription(const std::string& type) {
    Properties properties =
        Described({kOfxPropLabel, kOfxPropShortLabel, kOfxPropLongLabel, kOfxParamPropScriptName,
                   kOfxParamPropHint, kOfxParamPropParent},
                  {});
    const std::map<std::string, Name> ofOneType{{kOfxParamTypePage, kOfxParamPropPageChild},
                                                {kOfxParamTypeChoice, kOfxParamPropChoiceOption},
                                                {kOfxParamTypeDouble, kOfxParamPropDoubleType}};
    if (const auto found = ofOneType.find(type); found != ofOneType.end()) {
        properties.declare(found->second, {std::string()});
    }
    const Value zero = type == kOfxParamTypeDouble ? Value{0.0} : Value{0};
    if (type != kOfxParamTypeGroup && type != kOfxParamTypePage) {
        properties.declare(kOfxParamPropDefault, {zero});
        properties.declare(kOfxParamPropAnimates, {1});
    }
    if (type == kOfxParamTypeInteger || type == kOfxParamTypeDouble) {
        for (const Name name : {kOfxParamPropMin, kOfxParamPropMax, kOfxParamPropDisplayMin,
                                kOfxParamPropDisplayMax}) {
            properties.declare(name, {zero});
        }
    }
    return properties;
}

/// Performs a suite call that returns a value.
template <typename Answer>
OfxStatus Give(Answer* answer, const Answer& value) {
    return Counted([&] {
        *answer = value;
        return kOfxStatOK;
    });
}

/// Performs a suite call that looks up a clip or a parameter.
template <typename Objects, typename Handle>
OfxStatus Find(Objects& objects, const char* name, Handle* handle, OfxPropertySetHandle* set,
               OfxStatus missing) {
    return Counted([&] {
        const auto found = objects.find(name);
        if (found == objects.end()) {
            return missing;
        }
        *handle = reinterpret_cast<Handle>(&found->second);
        *set = found->second.properties.handle();
        return kOfxStatOK;
    });
}

const OfxImageEffectSuiteV1 kEffects = [] {
    OfxImageEffectSuiteV1 suite{}; // unused functions stay null
    suite.getPropertySet = [](OfxImageEffectHandle effect, OfxPropertySetHandle* set) {
        return Give(set, As<TestEffect>(effect).properties.handle());
    };
    suite.getParamSet = [](OfxImageEffectHandle effect, OfxParamSetHandle* set) {
        return Give(set, reinterpret_cast<OfxParamSetHandle>(effect));
    };
    suite.clipDefine = [](OfxImageEffectHandle effect, const char* name,
                          OfxPropertySetHandle* set) {
        return Counted([&] {
            TestClip& clip = As<TestEffect>(effect).clips[name];
            clip.properties = ClipDescription();
            *set = clip.properties.handle();
            return kOfxStatOK;
        });
    };
    suite.clipGetHandle = [](OfxImageEffectHandle effect, const char* name,
                             OfxImageClipHandle* clip, OfxPropertySetHandle* set) {
        return Find(As<TestEffect>(effect).clips, name, clip, set, kBadHandle);
    };
    suite.clipGetImage = [](OfxImageClipHandle clip, OfxTime, const OfxRectD*,
                            OfxPropertySetHandle* image) {
        return Counted([&] {
            Image* const connected = As<TestClip>(clip).image;
            if (connected == nullptr) {
                return kOfxStatFailed;
            }
            ++openImageCount;
            *image = connected->properties.handle();
            return kOfxStatOK;
        });
    };
    suite.clipReleaseImage = [](OfxPropertySetHandle) {
        --openImageCount; // counts the image as released even if this call is to fail
        return Counted([] { return kOfxStatOK; });
    };
    suite.clipGetRegionOfDefinition = [](OfxImageClipHandle clip, OfxTime, OfxRectD* region) {
        return Give(region, As<TestClip>(clip).region);
    };
    suite.abort = [](OfxImageEffectHandle effect) { return int{As<TestEffect>(effect).isAborted}; };
    return suite;
}();

OfxStatus Read(OfxParamHandle param, double time, va_list arguments) {
    const Param& read = As<Param>(param);
    const double value = read.valueAt(time);
    if (read.type == kOfxParamTypeDouble) {
        *va_arg(arguments, double*) = value;
    } else {
        *va_arg(arguments, int*) = static_cast<int>(std::lround(value));
    }
    return kOfxStatOK;
}

OfxStatus GetValueAtTime(OfxParamHandle param, OfxTime time, ...) {
    va_list arguments;
    va_start(arguments, time);
    const OfxStatus status = Counted([&] { return Read(param, time, arguments); });
    va_end(arguments);
    return status;
}

const OfxParameterSuiteV1 kParameters = [] {
    OfxParameterSuiteV1 suite{}; // unused functions stay null
    suite.paramDefine = [](OfxParamSetHandle set, const char* type, const char* name,
                           OfxPropertySetHandle* properties) {
        return Counted([&] {
            auto& params = As<TestEffect>(set).params;
            const auto [param, isNew] = params.insert({name, {type, ParamDescription(type)}});
            *properties = param->second.properties.handle();
            return isNew ? kOfxStatOK : OfxStatus{6}; // kOfxStatErrExists
        });
    };
    suite.paramGetHandle = [](OfxParamSetHandle set, const char* name, OfxParamHandle* handle,
                              OfxPropertySetHandle* properties) {
        return Find(As<TestEffect>(set).params, name, handle, properties, kUnknown);
    };
    suite.paramGetValueAtTime = GetValueAtTime;
    suite.paramGetNumKeys = [](OfxParamHandle param, unsigned int* count) {
        return Give(count, static_cast<unsigned int>(As<Param>(param).keys.size()));
    };
    suite.paramGetKeyTime = [](OfxParamHandle param, unsigned int nth, OfxTime* time) {
        return Give(time, std::next(As<Param>(param).keys.begin(), nth)->first);
    };
    return suite;
}();

OfxStatus Message(void*, const char*, const char*, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    char text[512];
    vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    const std::lock_guard lock(messageMutex);
    messages.emplace_back(text);
    return kOfxStatOK;
}

const OfxMessageSuiteV1 kMessages{.message = Message};

const void* FetchSuite(OfxPropertySetHandle, const char* name, int version) {
    const std::map<std::string, const void*> suites{{kOfxPropertySuite, &kProperties},
                                                    {kOfxImageEffectSuite, &kEffects},
                                                    {kOfxParameterSuite, &kParameters},
                                                    {kOfxMessageSuite, &kMessages}};
    const auto found = suites.find(name);
    return version == 1 && found != suites.end() ? found->second : nullptr;
}

template <typename Work>
auto WithSample(Channel channel, Work work) {
    switch (channel) {
    case Channel::Byte:
        return work(std::uint8_t{}, 255.0F);
    case Channel::Short:
        return work(std::uint16_t{}, 65535.0F);
    case Channel::Half:
        return work(Imath::half{}, 1.0F);
    default:
        return work(float{}, 1.0F);
    }
}

} // namespace

Properties::Properties(
    std::initializer_list<std::pair<const std::string, std::vector<Value>>> values)
    : mValues(values) {}

OfxStatus Properties::set(const std::string& name, int index, Value value) {
    const auto found = mValues.find(name);
    if (found == mValues.end()) {
        ADD_FAILURE() << "unknown property " << name;
        return kUnknown;
    }
    std::vector<Value>& values = found->second;
    const auto place = static_cast<std::size_t>(index);
    if (values.front().index() != value.index()) {
        ADD_FAILURE() << "wrong type for " << name;
        return kBadValue;
    }
    if (place > values.size()) {
        return kBadIndex;
    }
    values.resize(std::max(values.size(), place + 1));
    values[place] = std::move(value);
    return kOfxStatOK;
}

OfxStatus Properties::get(const std::string& name, int index, Value& value) const {
    const auto found = mValues.find(name);
    if (found == mValues.end()) {
        return kUnknown;
    }
    if (static_cast<std::size_t>(index) >= found->second.size()) {
        return kBadIndex;
    }
    const Value& held = found->second[static_cast<std::size_t>(index)];
    if (held.index() != value.index()) {
        return kBadValue;
    }
    value = held;
    return kOfxStatOK;
}

double Param::valueAt(double time) const {
    if (keys.empty()) {
        return type == kOfxParamTypeDouble ? *properties.at<double>(kOfxParamPropDefault)
                                           : *properties.at<int>(kOfxParamPropDefault);
    }
    const auto after = keys.lower_bound(time);
    if (after == keys.begin() || after == keys.end()) {
        return after == keys.end() ? keys.rbegin()->second : after->second;
    }
    const auto before = std::prev(after);
    return std::lerp(before->second, after->second,
                     (time - before->first) / (after->first - before->first));
}

int Image::rowBytes() const {
    return width() * channels * static_cast<int>(BytesOf(channel)) + padding;
}

void Image::make(const Colour& colour) {
    bytes.assign(static_cast<std::size_t>(rowBytes()) * static_cast<std::size_t>(height()),
                 std::byte{0x5A});
    const bool hasRows = height() > 0;
    properties = {
        {kOfxImagePropBounds, {bounds.x1, bounds.y1, bounds.x2, bounds.y2}},
        {kOfxImagePropRowBytes, {isTopDown ? -rowBytes() : rowBytes()}},
        {kOfxImagePropData, {static_cast<void*>(hasRows ? pixel(bounds.x1, bounds.y1) : nullptr)}},
        {kOfxImageEffectPropPixelDepth,
         {std::string(std::array{kOfxBitDepthByte, kOfxBitDepthShort, kOfxBitDepthHalf,
                                 kOfxBitDepthFloat}[static_cast<std::size_t>(channel)])}},
        {kOfxImageEffectPropComponents,
         {std::string(channels == 4 ? kOfxImageComponentRGBA : kOfxImageComponentRGB)}}};
    if (!tellsLittle) {
        const std::array kForms{kOfxImageOpaque, kOfxImageUnPreMultiplied, kOfxImagePreMultiplied};
        properties.declare(kOfxImageEffectPropRenderScale, {scale.x, scale.y});
        properties.declare(kOfxImagePropField, {std::string(kOfxImageFieldNone)});
        properties.declare(kOfxImageEffectPropPreMultiplication,
                           {std::string(kForms[static_cast<std::size_t>(coverage)])});
    }
    for (int y = bounds.y1; colour && y < bounds.y2; ++y) {
        for (int x = bounds.x1; x < bounds.x2; ++x) {
            std::array<float, 4> values = colour(x, y);
            for (std::size_t i = 0; coverage == Coverage::Premultiplied && i < 3; ++i) {
                values[i] *= values[3];
            }
            WithSample(channel, [&](auto sample, float white) {
                for (int i = 0; i < channels; ++i) {
                    const float value = values[static_cast<std::size_t>(i)] * white;
                    sample = static_cast<decltype(sample)>(white > 1 ? std::round(value) : value);
                    std::memcpy(pixel(x, y) + static_cast<std::size_t>(i) * sizeof sample, &sample,
                                sizeof sample);
                }
            });
        }
    }
}

std::byte* Image::pixel(int x, int y) {
    const int row = isTopDown ? bounds.y2 - 1 - y : y - bounds.y1;
    return bytes.data() + std::ptrdiff_t{row} * rowBytes() +
           std::ptrdiff_t{x - bounds.x1} * channels * static_cast<std::ptrdiff_t>(BytesOf(channel));
}

std::array<float, 4> Image::at(int x, int y) {
    std::array<float, 4> values{0, 0, 0, 1};
    WithSample(channel, [&](auto sample, float white) {
        for (int i = 0; i < channels; ++i) {
            std::memcpy(&sample, pixel(x, y) + static_cast<std::size_t>(i) * sizeof sample,
                        sizeof sample);
            values[static_cast<std::size_t>(i)] = static_cast<float>(sample) / white;
        }
    });
    return values;
}

void TestEffect::connect(Image& source, Image& output) {
    for (const auto& [name, image] : {std::pair{"Source", &source}, {"Output", &output}}) {
        TestClip& clip = clips[name];
        clip.image = image;
        clip.region = {image->bounds.x1 / image->scale.x, image->bounds.y1 / image->scale.y,
                       image->bounds.x2 / image->scale.x, image->bounds.y2 / image->scale.y};
        clip.properties = image->properties;
        clip.properties.declare(kOfxImagePropPixelAspectRatio, {1.0});
    }
}

void TestEffect::setProject(double x1, double y1, double x2, double y2) {
    properties = {{kOfxImageEffectPropProjectOffset, {x1, y1}},
                  {kOfxImageEffectPropProjectSize, {x2 - x1, y2 - y1}}};
}

OpenFXHost::OpenFXHost(const std::filesystem::path& module)
    : mLibrary(dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (mLibrary == nullptr) {
        throw std::runtime_error(dlerror());
    }
    const auto getPlugin = reinterpret_cast<OfxPlugin* (*)(int)>(dlsym(mLibrary, "OfxGetPlugin"));
    mPlugin = getPlugin(0);
    static OfxHost host{.host = nullptr, .fetchSuite = FetchSuite};
    mPlugin->setHost(&host);
    EXPECT_EQ(act(kOfxActionLoad), kOfxStatOK);
}

OpenFXHost::~OpenFXHost() {
    EXPECT_EQ(act(kOfxActionUnload), kOfxStatOK);
    dlclose(mLibrary);
}

OfxStatus OpenFXHost::act(Name action, TestEffect* effect, Properties in, Properties* out) const {
    return mPlugin->mainEntry(action, effect, in.handle(),
                              out != nullptr ? out->handle() : nullptr);
}

TestEffect OpenFXHost::described(OfxStatus* status) const {
    TestEffect effect;
    effect.properties = EffectDescription();
    OfxStatus described = act(kOfxActionDescribe, &effect);
    if (described == kOfxStatOK) {
        described = act(kOfxImageEffectActionDescribeInContext, &effect);
    }
    if (status != nullptr) {
        *status = described;
    } else {
        EXPECT_EQ(described, kOfxStatOK);
    }
    return effect;
}

OfxStatus OpenFXHost::render(TestEffect& effect, double time,
                             std::optional<OfxRectI> window) const {
    const Image& output = *effect.clips.at("Output").image;
    const OfxRectI part = window.value_or(output.bounds);
    return act(kOfxImageEffectActionRender, &effect,
               {{kOfxPropTime, {time}},
                {kOfxImageEffectPropRenderWindow, {part.x1, part.y1, part.x2, part.y2}},
                {kOfxImageEffectPropRenderScale, {output.scale.x, output.scale.y}},
                {kOfxImageEffectPropFieldToRender, {std::string(kOfxImageFieldNone)}}});
}

int OpenFXHost::failCall(int nth) {
    failingCall = nth;
    return calls.exchange(0);
}

std::vector<std::string> OpenFXHost::takeMessages() {
    const std::lock_guard lock(messageMutex);
    return std::exchange(messages, {});
}

int OpenFXHost::openImages() {
    return openImageCount;
}

} // namespace Kerovane::OpenFX
