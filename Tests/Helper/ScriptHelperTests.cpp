#include "Helper/ScriptHelper.h"

#include "AE_Effect.h"
#include "AE_GeneralPlug.h"
#include "Host/Suites/Suites.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace Kerovane::Tesselune {

namespace {

/// How the host below answers a script. A null text stands for a null handle.
struct Answer {
    const char* result = nullptr;
    const char* error = nullptr;
    A_Err status = 0;
    bool locks = true;
    std::string refusedSuite = {};
    std::string script = {};
    AEGP_PluginID plugin = -1;
};

Answer mAnswer;

AEGP_MemHandle HandleTo(const char* text) {
    AEGP_MemHandle handle = nullptr;
    if (text != nullptr) {
        void* data = nullptr;
        const auto size = static_cast<A_u_long>(std::strlen(text) + 1);
        Host::kMemorySuite.AEGP_NewMemHandle(0, "text", size, 0, &handle);
        Host::kMemorySuite.AEGP_LockMemHandle(handle, &data);
        std::memcpy(data, text, size);
    }
    return handle;
}

A_Err Execute(AEGP_PluginID plugin, const A_char* script, A_Boolean, AEGP_MemHandle* result,
              AEGP_MemHandle* error) {
    mAnswer.plugin = plugin;
    mAnswer.script = script;
    *result = HandleTo(mAnswer.result);
    *error = HandleTo(mAnswer.error);
    return mAnswer.status;
}

A_Err Lock(AEGP_MemHandle handle, void** data) {
    return mAnswer.locks ? Host::kMemorySuite.AEGP_LockMemHandle(handle, data)
                         : PF_Err_OUT_OF_MEMORY;
}

const AEGP_UtilitySuite5 kUtility{nullptr, Execute};
AEGP_MemorySuite1 mMemory = Host::kMemorySuite;

SPErr Acquire(const A_char* name, A_long version, const void** suite) {
    if (mAnswer.refusedSuite == name) {
        return PF_Err_INVALID_CALLBACK;
    }
    const void* table = nullptr;
    const SPErr err = Host::BasicSuite().AcquireSuite(name, version, &table);
    if (std::string("AEGP Utility Suite") == name && version == 11) {
        *suite = &kUtility;
    } else {
        *suite = table == &Host::kMemorySuite ? &mMemory : table;
    }
    return err;
}

/** A host with a script engine that answers as a test wants it. */
class Scripts : public testing::Test {
protected:
    Scripts() {
        mAnswer = {};
        mMemory.AEGP_LockMemHandle = Lock;
    }

    static void expectNothingLeft() {
        EXPECT_EQ(Host::LiveSuiteReferences(), 0);
        EXPECT_EQ(Host::LiveMemoryHandles(), 0);
    }

    SPBasicSuite mBasic{Acquire, Host::BasicSuite().ReleaseSuite};
};

TEST_F(Scripts, GiveTheirResultOrNothing) {
    struct {
        const char* name;
        const char* result;
        const char* error;
        A_Err status;
        bool locks;
        std::string expected;
    } const kCases[] = {
        {"result", "42", "", 0, true, "42"},
        {"empty result", "", "", 0, true, ""},
        {"failed script", "", "Syntax error", 0, true, ""},
        {"failed call without handles", nullptr, nullptr, PF_Err_OUT_OF_MEMORY, true, ""},
        {"no error handle", "7", nullptr, 0, true, "7"},
        {"handles that can't be locked", "42", "", 0, false, ""},
    };
    for (const auto& [name, result, error, status, locks, expected] : kCases) {
        SCOPED_TRACE(name);
        mAnswer = {.result = result, .error = error, .status = status, .locks = locks};
        EXPECT_EQ(ScriptHelper::RunSriptAndGetStringResult(&mBasic, "6 * 7"), expected);
        EXPECT_EQ(mAnswer.script, "6 * 7");
        EXPECT_EQ(mAnswer.plugin, 0);
        expectNothingLeft();
    }
}

TEST_F(Scripts, ThrowWhereTheHostRefusesASuiteAndReleaseTheOther) {
    for (const char* suite : {"AEGP Utility Suite", "AEGP Memory Suite"}) {
        mAnswer.refusedSuite = suite;
        EXPECT_THROW(ScriptHelper::RunSriptAndGetStringResult(&mBasic, "1"), int) << suite;
        expectNothingLeft();
    }
}

TEST_F(Scripts, EndInAHostWithoutAnEngine) {
    EXPECT_EQ(ScriptHelper::RunSriptAndGetStringResult(&Host::BasicSuite(), "1"), "");
    expectNothingLeft();
}

TEST(TrimStringWhiteSpaces, CutsTheEndsAlone) {
    const struct {
        std::string text, expected;
    } kCases[] = {
        {" a b\t\n", "a b"}, {"", ""}, {" \t\n\v\f\r", ""}, {"a", "a"}, {"\xa0 a", "\xa0 a"},
    };
    for (const auto& [text, expected] : kCases) {
        EXPECT_EQ(ScriptHelper::TrimStringWhiteSpaces(text), expected) << '"' << text << '"';
    }
}

} // namespace

} // namespace Kerovane::Tesselune
