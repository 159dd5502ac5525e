#include "Host/Session/EffectSession.h"

#include "AE_EffectCBSuites.h"
#include "AE_GeneralPlug.h"
#include "SPBasic.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace Kerovane::Host {
namespace {

/// Calls the suites as an effect would, through the records that the session passes to it.
class Suites : public testing::Test {
protected:
    EffectSession mSession{FAKE_EFFECT};
    SPBasicSuite& mBasic = *mSession.inData().pica_basicP;

    template <typename Table>
    const Table& acquire(const char* name, A_long version) {
        const void* table = nullptr;
        EXPECT_EQ(mBasic.AcquireSuite(name, version, &table), kSPNoError) << name;
        EXPECT_EQ(mBasic.ReleaseSuite(name, version), kSPNoError) << name;
        return *static_cast<const Table*>(table);
    }
};

TEST_F(Suites, AreCountedUntilReleased) {
    struct Row {
        const char* name;
        A_long version;
    };
    constexpr Row kOffered[] = {{"PF ANSI Suite", 1},       {"AEGP Utility Suite", 13},
                                {"AEGP Utility Suite", 11}, {"AEGP Memory Suite", 1},
                                {"PF World Suite", 2},      {"PF iterateFloat Suite", 1},
                                {"PF Handle Suite", 2}};
    int references = 0;
    for (const Row& suite : kOffered) {
        const void* table = nullptr;
        EXPECT_EQ(mBasic.AcquireSuite(suite.name, suite.version, &table), kSPNoError) << suite.name;
        EXPECT_NE(table, nullptr) << suite.name;
        EXPECT_EQ(mSession.liveCounts().suites, ++references);
    }
    for (const Row& suite : kOffered) {
        EXPECT_EQ(mBasic.ReleaseSuite(suite.name, suite.version), kSPNoError);
        EXPECT_EQ(mSession.liveCounts().suites, --references);
    }
}

TEST_F(Suites, AreRefusedUnderAnotherNameOrVersion) {
    const void* table = nullptr;
    EXPECT_NE(mBasic.AcquireSuite("PF World Suite", 1, &table), kSPNoError);
    EXPECT_NE(mBasic.AcquireSuite("PF world suite", 2, &table), kSPNoError);
    EXPECT_NE(mBasic.ReleaseSuite("DRAWBOT Draw Suite", 1), kSPNoError);
    EXPECT_EQ(table, nullptr);
    EXPECT_EQ(mSession.liveCounts().suites, 0);
}

TEST_F(Suites, CountHandlesUntilDisposed) {
    const auto& suite = acquire<PF_HandleSuite1>("PF Handle Suite", 2);
    PF_Handle handle = suite.host_new_handle(1000);
    ASSERT_NE(handle, nullptr);
    std::memset(suite.host_lock_handle(handle), 1, 1000);
    EXPECT_EQ(*handle, suite.host_lock_handle(handle));
    EXPECT_EQ(mSession.inData().utils->host_get_handle_size(handle), 1000U);
    EXPECT_EQ(mSession.liveCounts().handles, 1);
    suite.host_dispose_handle(handle);
    suite.host_dispose_handle(handle);
    EXPECT_EQ(suite.host_lock_handle(handle), nullptr);
    EXPECT_EQ(mSession.liveCounts().handles, 0);
}

TEST_F(Suites, ReturnANullHandleIfMemoryRunsOut) {
    const auto& suite = acquire<PF_HandleSuite1>("PF Handle Suite", 2);
    EXPECT_EQ(suite.host_new_handle(A_HandleSize{1} << 62), nullptr);
    EXPECT_EQ(mSession.liveCounts().handles, 0);
}

TEST_F(Suites, AnswerScriptsWithAnEmptyResultAndAnError) {
    const auto& memory = acquire<AEGP_MemorySuite1>("AEGP Memory Suite", 1);
    const auto& utility = acquire<AEGP_UtilitySuite5>("AEGP Utility Suite", 11);
    AEGP_MemHandle handles[2] = {};
    utility.AEGP_ExecuteScript(0, "app.version", 0, &handles[0], &handles[1]);
    EXPECT_EQ(mSession.liveCounts().memoryHandles, 2);
    std::string texts[2];
    for (int i = 0; i < 2; ++i) {
        void* text = nullptr;
        ASSERT_EQ(memory.AEGP_LockMemHandle(handles[i], &text), PF_Err_NONE);
        texts[i] = static_cast<const char*>(text);
        EXPECT_EQ(memory.AEGP_FreeMemHandle(handles[i]), PF_Err_NONE);
        EXPECT_NE(memory.AEGP_FreeMemHandle(handles[i]), PF_Err_NONE);
    }
    EXPECT_EQ(texts[0], "");
    EXPECT_NE(texts[1], "");
    EXPECT_EQ(mSession.liveCounts().memoryHandles, 0);
}

TEST_F(Suites, RegisterEachPlugInUnderItsOwnId) {
    const auto& utility = acquire<AEGP_UtilitySuite6>("AEGP Utility Suite", 13);
    AEGP_PluginID first = 0;
    AEGP_PluginID second = 0;
    EXPECT_EQ(utility.AEGP_RegisterWithAEGP(nullptr, "one", &first), PF_Err_NONE);
    EXPECT_EQ(utility.AEGP_RegisterWithAEGP(nullptr, "two", &second), PF_Err_NONE);
    EXPECT_NE(first, 0);
    EXPECT_NE(first, second);
    EXPECT_EQ(utility.AEGP_RegisterWithAEGP(nullptr, nullptr, &first), PF_Err_BAD_CALLBACK_PARAM);
}

TEST_F(Suites, CountWorldsUntilDisposed) {
    const auto& suite = acquire<PF_WorldSuite2>("PF World Suite", 2);
    PF_EffectWorld world{};
    ASSERT_EQ(suite.PF_NewWorld(nullptr, 4, 3, 1, PF_PixelFormat_ARGB64, &world), PF_Err_NONE);
    PF_PixelFormat format = 0;
    EXPECT_EQ(suite.PF_GetPixelFormat(&world, &format), PF_Err_NONE);
    EXPECT_EQ(format, PF_PixelFormat_ARGB64);
    EXPECT_EQ(mSession.liveCounts().worlds, 1);
    EXPECT_EQ(suite.PF_DisposeWorld(nullptr, &world), PF_Err_NONE);
    EXPECT_NE(suite.PF_DisposeWorld(nullptr, &world), PF_Err_NONE);
    EXPECT_EQ(mSession.liveCounts().worlds, 0);
    EXPECT_NE(suite.PF_NewWorld(nullptr, 4, 3, 1, 0, &world), PF_Err_NONE);
    EXPECT_EQ(suite.PF_NewWorld(nullptr, 1 << 30, 3, 1, PF_PixelFormat_ARGB32, &world),
              PF_Err_OUT_OF_MEMORY);
}

TEST_F(Suites, HandOutPixelsInTheirOwnDepthOnly) {
    World world8(Depth::Bits8, 2, 2);
    World world16(Depth::Bits16, 2, 2);
    PF_UtilCallbacks& utils = *mSession.inData().utils;
    PF_Pixel8* pixels8 = nullptr;
    PF_Pixel16* pixels16 = nullptr;
    utils.get_pixel_data8(&world8.layer(), nullptr, &pixels8);
    utils.get_pixel_data16(&world16.layer(), nullptr, &pixels16);
    EXPECT_EQ(pixels8, world8.row<PF_Pixel8>(0).data());
    EXPECT_EQ(pixels16, world16.row<PF_Pixel16>(0).data());
    utils.get_pixel_data8(&world16.layer(), nullptr, &pixels8);
    utils.get_pixel_data16(&world8.layer(), nullptr, &pixels16);
    EXPECT_EQ(pixels8, nullptr);
    EXPECT_EQ(pixels16, nullptr);
}

struct Visit {
    A_long x, y;
    bool operator==(const Visit&) const = default;
};

/// Records each place that it is called for, copies `in` to `out`, and fails in column 2.
PF_Err CopyUntilTwo(void* refcon, A_long x, A_long y, PF_PixelFloat* in, PF_PixelFloat* out) {
    static_cast<std::vector<Visit>*>(refcon)->push_back({x, y});
    *out = *in;
    return x == 2 ? PF_Err_OUT_OF_MEMORY : PF_Err_NONE;
}

TEST_F(Suites, IterateOnceOverPixelsThatBothWorldsHave) {
    const auto& suite = acquire<PF_iterateFloatSuite1>("PF iterateFloat Suite", 1);
    World source(Depth::Float32, 2, 3);
    World destination(Depth::Float32, 4, 2, 80);
    source.row<PF_PixelFloat>(1)[1].green = 0.5F;
    std::vector<Visit> visits;
    EXPECT_EQ(suite.iterate(&mSession.inData(), 0, 3, &source.layer(), nullptr, &visits,
                            CopyUntilTwo, &destination.layer()),
              PF_Err_NONE);
    EXPECT_EQ(visits, (std::vector<Visit>{{0, 0}, {1, 0}, {0, 1}, {1, 1}}));
    EXPECT_EQ(destination.row<PF_PixelFloat>(1)[1].green, 0.5F);

    const PF_Rect area{.left = 1, .top = -4, .right = 9, .bottom = 1};
    visits.clear();
    suite.iterate(&mSession.inData(), 0, 3, &source.layer(), &area, &visits, CopyUntilTwo,
                  &destination.layer());
    EXPECT_EQ(visits, (std::vector<Visit>{{1, 0}}));
}

TEST_F(Suites, StopIterationAtTheFirstErrorAndRefuseOtherDepths) {
    const auto& suite = acquire<PF_iterateFloatSuite1>("PF iterateFloat Suite", 1);
    World floats(Depth::Float32, 4, 4);
    World bytes(Depth::Bits8, 4, 4);
    std::vector<Visit> visits;
    EXPECT_EQ(suite.iterate(&mSession.inData(), 0, 4, &floats.layer(), nullptr, &visits,
                            CopyUntilTwo, &floats.layer()),
              PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(visits.size(), 3U);
    EXPECT_EQ(suite.iterate(&mSession.inData(), 0, 4, &bytes.layer(), nullptr, &visits,
                            CopyUntilTwo, &floats.layer()),
              PF_Err_BAD_CALLBACK_PARAM);
}

TEST_F(Suites, FormatTextLikeTheCLibrary) {
    const auto& suite = acquire<PF_ANSICallbacksSuite1>("PF ANSI Suite", 1);
    char text[32];
    EXPECT_EQ(suite.sprintf(text, "%s v%d", "name", 3), 7);
    EXPECT_STREQ(text, "name v3");
    mSession.inData().utils->ansi.strcpy(text, "copied");
    EXPECT_STREQ(text, "copied");
}

} // namespace
} // namespace Kerovane::Host
