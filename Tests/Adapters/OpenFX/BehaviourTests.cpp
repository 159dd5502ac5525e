#include "Tests/Adapters/OpenFX/OpenFXHost.h"
#include "Tests/Support/EglHost.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>
#include <tuple>

namespace Kerovane::OpenFX {

namespace {

namespace fs = std::filesystem;

constexpr OfxRectI kBounds{0, 0, 32, 20};

/// An instance with its own images.
struct Shot {
    explicit Shot(const TestEffect& described, double size = 8) : effect(described) {
        source.make([](int x, int y) {
            return std::array{static_cast<float>(x) / 32, static_cast<float>(y) / 20, 0.5F, 1.0F};
        });
        output.make();
        effect.connect(source, output);
        effect.set("size", size);
    }

    TestEffect effect;
    Image source{.bounds = kBounds};
    Image output{.bounds = kBounds};
};

TEST(Failures, FailedCallsAreReportedAndLeakNothing) {
    const OpenFXHost host;
    const TestEffect described = host.described();
    Shot shot(described);
    const auto live = [&] {
        OfxStatus status = kOfxStatOK;
        static_cast<void>(host.described(&status));
        Properties out{{kOfxImageEffectPropRegionOfDefinition, {0.0, 0.0, 0.0, 0.0}},
                       {"OfxImageClipPropRoI_Source", {0.0, 0.0, 0.0, 0.0}},
                       {"OfxImageClipPropComponents_Source", {std::string()}},
                       {"OfxImageClipPropComponents_Output", {std::string()}},
                       {kOfxImageEffectPropPreMultiplication, {std::string()}}};
        bool hasFailed = status != kOfxStatOK;
        for (const Name action :
             {kOfxImageEffectActionGetClipPreferences, kOfxImageEffectActionGetRegionOfDefinition,
              kOfxImageEffectActionGetRegionsOfInterest}) {
            status = host.act(action, &shot.effect, {{kOfxPropTime, {0.0}}}, &out);
            EXPECT_TRUE(status == kOfxStatOK || status == kOfxStatFailed);
            hasFailed = hasFailed || status != kOfxStatOK;
        }
        status = host.render(shot.effect);
        EXPECT_TRUE(status == kOfxStatOK || status == kOfxStatFailed);
        return hasFailed || status != kOfxStatOK;
    };
    OpenFXHost::failCall(0);
    EXPECT_FALSE(live());
    const int count = OpenFXHost::failCall(0);
    ASSERT_GT(count, 200);
    int reported = 0;
    for (int nth = 1; nth <= count; ++nth) {
        OpenFXHost::failCall(nth);
        const bool hasFailed = live();
        reported += hasFailed ? 1 : 0;
        EXPECT_EQ(OpenFXHost::takeMessages().size(), hasFailed ? 1U : 0U) << nth;
        EXPECT_EQ(OpenFXHost::openImages(), 0) << nth;
    }
    EXPECT_GT(reported, 100);
    OpenFXHost::failCall(0);
    EXPECT_FALSE(live());
}

TEST(Failures, UnsupportedImagesAreReportedToTheUser) {
    const std::tuple<const char*, Value, const char*> rows[] = {
        {kOfxImageEffectPropComponents, std::string("OfxImageComponentAlpha"), "not supported"},
        {kOfxImageEffectPropPixelDepth, std::string("OfxBitDepthNone"), "not supported"},
        {kOfxImagePropField, std::string("OfxFieldLower"), "only whole frames"},
        {kOfxImagePropRowBytes, 100, "100 bytes from row to row"},
    };
    const OpenFXHost host;
    for (const auto& [property, value, reason] : rows) {
        Shot shot(host.described());
        shot.source.properties.declare(property, {value});
        const std::vector<std::byte> before = shot.output.bytes;
        EXPECT_EQ(host.render(shot.effect), kOfxStatFailed);
        const std::vector<std::string> messages = OpenFXHost::takeMessages();
        ASSERT_EQ(messages.size(), 1U);
        EXPECT_NE(messages[0].find(reason), std::string::npos) << messages[0];
        EXPECT_EQ(shot.output.bytes, before);
    }
    EXPECT_EQ(OpenFXHost::openImages(), 0);
}

TEST(Actions, DoNothingIfUnknownOrAborted) {
    const OpenFXHost host;
    Shot shot(host.described());
    EXPECT_EQ(host.act("OfxActionOfAnotherDay", &shot.effect), kOfxStatReplyDefault);
    const std::vector<std::byte> before = shot.output.bytes;
    shot.effect.isAborted = true;
    EXPECT_EQ(host.render(shot.effect), kOfxStatOK);
    EXPECT_EQ(shot.output.bytes, before);
    shot.effect.isAborted = false;
    shot.effect.clips.at("Source").image = nullptr;
    EXPECT_EQ(host.render(shot.effect), kOfxStatOK);
    EXPECT_EQ(shot.output.bytes, std::vector<std::byte>(before.size())) << "an empty picture";
}

TEST(Instances, RenderConcurrentlyWhileOthersLoadAndUnload) {
    std::map<double, std::vector<std::byte>> expected;
    const OpenFXHost host;
    const TestEffect described = host.described();
    for (const double size : {3, 6, 9}) {
        Shot shot(described, size);
        ASSERT_EQ(host.render(shot.effect), kOfxStatOK);
        expected[size] = shot.output.bytes;
    }
    std::vector<std::thread> threads;
    for (int i = 0; i < 9; ++i) {
        threads.emplace_back([&, i] {
            const double size = 3 * (i % 3 + 1);
            const OpenFXHost own;
            for (int repeat = 0; repeat < 5; ++repeat) {
                Shot shot(i % 2 == 0 ? own.described() : described,
                          size); // ends without a destroy action
                EXPECT_EQ(own.act(kOfxActionCreateInstance, &shot.effect), kOfxStatReplyDefault);
                EXPECT_EQ(own.render(shot.effect), kOfxStatOK);
                EXPECT_EQ(shot.output.bytes, expected[size]);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(Bundle, WorksWhereverItIsCopiedTo) {
    const TemporaryFolder folder;
    fs::copy(OPENFX_BUNDLE, folder / "Tesselune.ofx.bundle", fs::copy_options::recursive);
    const fs::path module = folder / "Tesselune.ofx.bundle/Contents/Linux-x86-64/Tesselune.ofx";
    {
        const OpenFXHost host(module);
        Shot shot(host.described());
        EXPECT_EQ(host.render(shot.effect), kOfxStatOK);
        EXPECT_TRUE(OpenFXHost::takeMessages().empty());
    }
    fs::copy(OPENFX_MODULE, folder / "Alone.ofx");
    const OpenFXHost alone(folder / "Alone.ofx");
    OfxStatus status = kOfxStatOK;
    static_cast<void>(alone.described(&status));
    EXPECT_EQ(status, kOfxStatFailed);
    ASSERT_EQ(OpenFXHost::takeMessages().size(), 1U);
}

TEST(HostContext, StaysCurrentAcrossFrames) {
    const TestSupport::EglHost context;
    context.makeCurrent();
    {
        const OpenFXHost host;
        Shot shot(host.described());
        EXPECT_EQ(host.render(shot.effect), kOfxStatOK);
        EXPECT_EQ(Platform::CurrentEglBinding(), context.binding());
    }
    EXPECT_EQ(Platform::CurrentEglBinding(), context.binding());
}

} // namespace

} // namespace Kerovane::OpenFX
