#include "Plugins/Shared/Helper/ScriptHelper.h"

#include "AE_Effect.h"
#include "AE_GeneralPlug.h"
#include "Host/Session/Suites/Suites.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace Kerovane::Tesselune {

namespace {

/// How the host below answers a script. A null text stands for a null handle.
struct Answer {
    const char* result = nullptr;
    const char* error = nullptr;
    A_Err status = 0;
    int failingCall = 0; ///< number of the host call that fails (1: the first, 0: none)
    int calls = 0;
    std::string script = {};
    AEGP_PluginID plugin = -1;
};

Answer mAnswer;

/// Counts a call. Returns an error if the call is to fail, else `result`.
A_Err Counted(A_Err result) {
    return ++mAnswer.calls == mAnswer.failingCall ? A_Err{PF_Err_INVALID_CALLBACK} : result;
}

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
    const A_Err status = Counted(mAnswer.status);
    if (status == mAnswer.status) {
        mAnswer.plugin = plugin;
        mAnswer.script = script;
        *result = HandleTo(mAnswer.result);
        *error = HandleTo(mAnswer.error);
    }
    return status;
}

A_Err Lock(AEGP_MemHandle handle, void** data) {
    const A_Err status = Counted(0);
    return status != 0 ? status : Host::kMemorySuite.AEGP_LockMemHandle(handle, data);
}

A_Err Free(AEGP_MemHandle handle) {
    return Counted(Host::kMemorySuite.AEGP_FreeMemHandle(handle));
}

const AEGP_UtilitySuite5 kUtility{nullptr, Execute};
AEGP_MemorySuite1 mMemory = Host::kMemorySuite;

SPErr Acquire(const A_char* name, A_long version, const void** suite) {
    const SPErr status = Counted(0);
    if (status != 0) {
        return status;
    }
    const SPErr err = Host::BasicSuite().AcquireSuite(name, version, suite);
    if (std::string("AEGP Utility Suite") == name && version == 11) {
        *suite = &kUtility;
    } else if (*suite == &Host::kMemorySuite) {
        *suite = &mMemory;
    }
    return err;
}

SPErr Release(const A_char* name, A_long version) {
    return Counted(Host::BasicSuite().ReleaseSuite(name, version));
}

/** A host whose script engine returns the answer that a test sets. */
class Scripts : public testing::Test {
protected:
    Scripts() {
        mMemory.AEGP_LockMemHandle = Lock;
        mMemory.AEGP_FreeMemHandle = Free;
    }

    /// Returns the script's result in a host that gives `answer`; "13" if kSuiteRefused is thrown.
    std::string resultOf(const Answer& answer) {
        mAnswer = answer;
        std::string result;
        try {
            result = ScriptHelper::RunSriptAndGetStringResult(&mBasic, "6 * 7");
        } catch (int thrown) {
            result = std::to_string(thrown);
        }
        EXPECT_EQ(Host::LiveSuiteReferences(), 0);
        EXPECT_EQ(Host::LiveMemoryHandles(), 0);
        return result;
    }

    SPBasicSuite mBasic{Acquire, Release};
};

TEST_F(Scripts, ReturnTheirResultOrAnEmptyText) {
    EXPECT_EQ(resultOf({.result = "42", .error = ""}), "42");
    EXPECT_EQ(mAnswer.script, "6 * 7");
    EXPECT_EQ(mAnswer.plugin, 0);
    EXPECT_EQ(resultOf({.result = "", .error = ""}), "");
    EXPECT_EQ(resultOf({.result = "", .error = "Syntax error"}), "");
    EXPECT_EQ(resultOf({.status = PF_Err_OUT_OF_MEMORY}), "") << "no handles";
    EXPECT_EQ(resultOf({.result = "7"}), "7") << "no handle of an error";
    EXPECT_EQ(ScriptHelper::RunSriptAndGetStringResult(&Host::BasicSuite(), "1"), "")
        << "no engine";
}

TEST_F(Scripts, ReleaseEverythingWhicheverHostCallFails) {
    EXPECT_EQ(resultOf({.result = "42", .error = ""}), "42");
    std::vector<std::string> results;
    const int calls = mAnswer.calls;
    for (int nth = 1; nth <= calls; ++nth) {
        results.push_back(resultOf({.result = "42", .error = "", .failingCall = nth}));
    }
    // The calls are: two suites acquired, the script run, two texts locked, two texts freed, two
    // suites released. From the second lock on, a failure does not change the result.
    EXPECT_EQ(results,
              (std::vector<std::string>{"13", "13", "", "", "42", "42", "42", "42", "42"}));
}

TEST(TrimStringWhiteSpaces, TrimsOnlyTheEnds) {
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
