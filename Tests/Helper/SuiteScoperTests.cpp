#include "Plugins/Shared/Helper/SuiteScoper.h"

#include "AE_EffectCBSuites.h"
#include "Host/Session/Suites/Suites.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Kerovane::Tesselune {

namespace {

/// Requests to the basic suite below, and the one that it refuses.
struct {
    std::vector<std::string> acquired, released;
    std::string refused;
    bool givesPointerAllTheSame = false;
} mLog;

int mTable = 0;

SPErr Acquire(const A_char* name, A_long version, const void** suite) {
    const std::string id = name + std::string(" ") + std::to_string(version);
    mLog.acquired.push_back(id);
    const bool isRefused = id == mLog.refused;
    *suite = isRefused && !mLog.givesPointerAllTheSame ? nullptr : &mTable;
    return isRefused ? SPErr{PF_Err_INVALID_CALLBACK} : SPErr{kSPNoError};
}

SPErr Release(const A_char* name, A_long version) {
    mLog.released.push_back(name + std::string(" ") + std::to_string(version));
    return kSPNoError;
}

/** A host that has only a basic suite and string functions. */
class Suites : public testing::Test {
protected:
    Suites() {
        mLog = {};
        mUtilities.ansi = {.sprintf = Host::kAnsiSuite.sprintf, .strcpy = Host::kAnsiSuite.strcpy};
        mInData.utils = &mUtilities;
        mInData.pica_basicP = &mBasic;
    }

    void expectMessage(const std::string& message) {
        EXPECT_EQ(std::string(mOutData.return_msg), message);
        EXPECT_EQ((mOutData.out_flags & PF_OutFlag_DISPLAY_ERROR_MESSAGE) != 0, !message.empty());
        mOutData = {};
    }

    SPBasicSuite mBasic{Acquire, Release};
    PF_UtilCallbacks mUtilities{};
    PF_InData mInData{};
    PF_OutData mOutData{};
};

const std::vector<std::string> kDrawbotSuites = {"DRAWBOT Draw Suite 1", "DRAWBOT Supplier Suite 1",
                                                 "DRAWBOT Surface Suite 2", "DRAWBOT Path Suite 1"};

TEST_F(Suites, AreReleasedAtTheEndOfTheScope) {
    mLog.refused = "Third 1";
    try {
        const SuiteScoper<int> first(&mInData, "First", 3);
        EXPECT_EQ(first.operator->(), &mTable);
        { const SuiteScoper<int> second(&mBasic, "Second", 4); }
        EXPECT_EQ(mLog.released, std::vector<std::string>{"Second 4"});
        const SuiteScoper<int> third(&mInData, "Third", 1);
    } catch (int) {
    }
    EXPECT_EQ(mLog.released, (std::vector<std::string>{"Second 4", "First 3"}));
}

TEST_F(Suites, ThrowIfRefusedAndReportItIfRequested) {
    mLog.refused = "Some Suite 3";
    struct {
        PF_OutData* outData;
        const char* message;
        const char* expected;
    } const kCases[] = {
        {&mOutData, nullptr, "Not able to acquire AEFX Suite."},
        {&mOutData, "Out of luck", "Out of luck"},
        {nullptr, "Out of luck", ""},
    };
    for (const auto& [outData, message, expected] : kCases) {
        try {
            const SuiteScoper<int> suite(&mInData, "Some Suite", 3, outData, message);
            FAIL() << "the suite is refused";
        } catch (int value) {
            EXPECT_EQ(value, 13);
        }
        expectMessage(expected);
    }
    EXPECT_THROW(SuiteScoper<int>(&mBasic, "Some Suite", 3), int);
    EXPECT_TRUE(mLog.released.empty()) << "nothing was acquired";
}

TEST_F(Suites, ManualAcquisitionIsJudgedByThePointerNotTheStatus) {
    mLog.refused = "Some Suite 3";
    void* suite = nullptr;
    EXPECT_EQ(AcquireSuite(&mInData, &mOutData, "Some Suite", 3, nullptr, &suite), 516);
    expectMessage("Not able to acquire AEFX Suite-Some Suite-3");
    EXPECT_EQ(AcquireSuite(&mInData, &mOutData, "Some Suite", 3, "Sorry", &suite), 516);
    expectMessage("Sorry");
    mLog.givesPointerAllTheSame = true;
    EXPECT_EQ(AcquireSuite(&mInData, &mOutData, "Some Suite", 3, nullptr, &suite), 0);
    EXPECT_EQ(suite, &mTable);
    expectMessage("");
}

TEST_F(Suites, TruncateLongTexts) {
    mInData.pica_basicP = nullptr;
    void* suite = nullptr;
    const std::string name(3000, 'n');
    EXPECT_EQ(AcquireSuite(&mInData, &mOutData, name.c_str(), 1, nullptr, &suite), 516);
    expectMessage(("Not able to acquire AEFX Suite-" + name).substr(0, 255));
    EXPECT_EQ(ReleaseSuite(&mInData, &mOutData, "Some Suite", 1, name.c_str()), 516);
    expectMessage(name.substr(0, 255));
}

TEST_F(Suites, ManualReleaseFailsOnlyWithoutABasicSuite) {
    EXPECT_EQ(ReleaseSuite(&mInData, &mOutData, "Some Suite", 3, nullptr), 0);
    expectMessage("");
    EXPECT_EQ(mLog.released, std::vector<std::string>{"Some Suite 3"});
    mInData.pica_basicP = nullptr;
    EXPECT_EQ(ReleaseSuite(&mInData, &mOutData, "Some Suite", 3, nullptr), 516);
    expectMessage("Not able to release AEFX Suite.");
}

TEST_F(Suites, DrawbotSuitesAreAcquiredAndReleasedTogether) {
    DRAWBOT_Suites suites{};
    EXPECT_EQ(AcquireDrawbotSuites(&mInData, &mOutData, &suites), 0);
    EXPECT_EQ(mLog.acquired, kDrawbotSuites);
    EXPECT_NE(suites.path_suiteP, nullptr);
    EXPECT_EQ(ReleaseDrawbotSuites(&mInData, &mOutData), 0);
    EXPECT_EQ(mLog.released, kDrawbotSuites);

    mLog = {};
    mLog.refused = kDrawbotSuites[2];
    suites = {};
    EXPECT_EQ(AcquireDrawbotSuites(&mInData, &mOutData, &suites), 516);
    expectMessage("Not able to acquire AEFX Suite-DRAWBOT Surface Suite-2");
    EXPECT_EQ(mLog.acquired.size(), 3U) << "the first error ends it";
    EXPECT_TRUE(suites.supplier_suiteP != nullptr && suites.surface_suiteP == nullptr);
    EXPECT_TRUE(mLog.released.empty()) << "the caller releases the others";

    EXPECT_EQ(AcquireDrawbotSuites(&mInData, &mOutData, nullptr), 514);
    expectMessage("NULL suite pointer passed to AEFX_AcquireDrawbotSuites");
    mInData.pica_basicP = nullptr;
    EXPECT_EQ(ReleaseDrawbotSuites(&mInData, &mOutData), 0);
    expectMessage("Not able to release AEFX Suite.");
}

} // namespace

} // namespace Kerovane::Tesselune
