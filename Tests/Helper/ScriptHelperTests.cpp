#include "Plugins/Shared/Helper/ScriptHelper.h"

#include "AE_Effect.h"
#include "AE_GeneralPlug.h"
#include "Host/Session/Suites/Suites.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace Kerovane::Tesselune {

namespace {

enum class Call { None, Acquire, Execute, Lock, Free, Release };

/// How the host below answers a script. A null text stands for a null handle.
struct Answer {
    const char* result = nullptr;
    const char* error = nullptr;
    A_Err status = 0;
    Call faultyCall = Call::None; ///< the `nth` of these fails, the first being 1
    int nth = 0;
    std::map<Call, int> calls = {};
    std::string script = {};
    AEGP_PluginID plugin = -1;

    bool fails(Call call) { return ++calls[call] == nth && call == faultyCall; }
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
    if (mAnswer.fails(Call::Execute)) {
        return PF_Err_INVALID_CALLBACK;
    }
    mAnswer.plugin = plugin;
    mAnswer.script = script;
    *result = HandleTo(mAnswer.result);
    *error = HandleTo(mAnswer.error);
    return mAnswer.status;
}

A_Err Lock(AEGP_MemHandle handle, void** data) {
    return mAnswer.fails(Call::Lock) ? A_Err{PF_Err_OUT_OF_MEMORY}
                                     : Host::kMemorySuite.AEGP_LockMemHandle(handle, data);
}

/// The host takes the handle back all the same.
A_Err Free(AEGP_MemHandle handle) {
    const A_Err err = Host::kMemorySuite.AEGP_FreeMemHandle(handle);
    return mAnswer.fails(Call::Free) ? A_Err{PF_Err_BAD_CALLBACK_PARAM} : err;
}

const AEGP_UtilitySuite5 kUtility{nullptr, Execute};
AEGP_MemorySuite1 mMemory = Host::kMemorySuite;

SPErr Acquire(const A_char* name, A_long version, const void** suite) {
    if (mAnswer.fails(Call::Acquire)) {
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

/// The host takes the suite back all the same.
SPErr Release(const A_char* name, A_long version) {
    const SPErr err = Host::BasicSuite().ReleaseSuite(name, version);
    return mAnswer.fails(Call::Release) ? SPErr{PF_Err_INVALID_CALLBACK} : err;
}

/** A host with a script engine that answers as a test wants it. */
class Scripts : public testing::Test {
protected:
    Scripts() {
        mAnswer = {};
        mMemory.AEGP_LockMemHandle = Lock;
        mMemory.AEGP_FreeMemHandle = Free;
    }

    static void expectNothingLeft() {
        EXPECT_EQ(Host::LiveSuiteReferences(), 0);
        EXPECT_EQ(Host::LiveMemoryHandles(), 0);
    }

    SPBasicSuite mBasic{Acquire, Release};
};

TEST_F(Scripts, GiveTheirResultOrNothing) {
    struct {
        const char* name;
        const char* result;
        const char* error;
        A_Err status;
        std::string expected;
    } const kCases[] = {
        {"result", "42", "", 0, "42"},
        {"empty result", "", "", 0, ""},
        {"failed script", "", "Syntax error", 0, ""},
        {"failed call without handles", nullptr, nullptr, PF_Err_OUT_OF_MEMORY, ""},
        {"no error handle", "7", nullptr, 0, "7"},
    };
    for (const auto& [name, result, error, status, expected] : kCases) {
        SCOPED_TRACE(name);
        mAnswer = {.result = result, .error = error, .status = status};
        EXPECT_EQ(ScriptHelper::RunSriptAndGetStringResult(&mBasic, "6 * 7"), expected);
        EXPECT_EQ(mAnswer.script, "6 * 7");
        EXPECT_EQ(mAnswer.plugin, 0);
        expectNothingLeft();
    }
}

TEST_F(Scripts, LeaveNothingBehindWhicheverOfTheHostsCallsFails) {
    constexpr const char* kThrows = nullptr;
    const struct {
        Call call;
        std::vector<const char*> results; ///< where the first of these calls fails, the second...
    } kCases[] = {
        {Call::Acquire, {kThrows, kThrows}},
        {Call::Execute, {""}},
        {Call::Lock, {"", "42"}},
        {Call::Free, {"42", "42"}},
        {Call::Release, {"42", "42"}},
    };
    for (const auto& [call, results] : kCases) {
        mAnswer = {.result = "42", .error = ""};
        EXPECT_EQ(ScriptHelper::RunSriptAndGetStringResult(&mBasic, "6 * 7"), "42");
        EXPECT_EQ(mAnswer.calls[call], static_cast<int>(results.size()));
        int nth = 0;
        for (const char* result : results) {
            mAnswer = {.result = "42", .error = "", .faultyCall = call, .nth = ++nth};
            SCOPED_TRACE(testing::Message() << static_cast<int>(call) << ", number " << nth);
            if (result == kThrows) {
                EXPECT_THROW(ScriptHelper::RunSriptAndGetStringResult(&mBasic, "6 * 7"), int);
            } else {
                EXPECT_EQ(ScriptHelper::RunSriptAndGetStringResult(&mBasic, "6 * 7"), result);
            }
            expectNothingLeft();
        }
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
