#include "Plugins/Shared/Helper/ScriptHelper.h"

#include "AE_GeneralPlug.h"
#include "Plugins/Shared/Helper/SuiteScoper.h"

#include <string_view>

namespace Kerovane::Tesselune {

namespace {

/// The script runs on behalf of no plug-in.
constexpr AEGP_PluginID kNoPlugin = 0;

/** A text in the host's memory, received as a handle. The destructor frees it. */
class HostText {
public:
    explicit HostText(const SuiteScoper<AEGP_MemorySuite1>& memory) : mMemory(memory) {}

    /// Frees the handle without unlocking it first.
    ~HostText() {
        if (mHandle != nullptr) {
            mMemory->AEGP_FreeMemHandle(mHandle);
        }
    }

    HostText(const HostText&) = delete;
    HostText& operator=(const HostText&) = delete;

    /// Returns the address at which the host stores the handle.
    AEGP_MemHandle* receive() { return &mHandle; }

    /// Locks the handle and returns its zero-terminated text; empty if there is none.
    std::string_view lock() {
        void* text = nullptr;
        if (mHandle != nullptr) {
            mMemory->AEGP_LockMemHandle(mHandle, &text);
        }
        return text != nullptr ? static_cast<const char*>(text) : std::string_view();
    }

private:
    const SuiteScoper<AEGP_MemorySuite1>& mMemory;
    AEGP_MemHandle mHandle = nullptr;
};

} // namespace

std::string ScriptHelper::RunSriptAndGetStringResult(SPBasicSuite* basic, const char* script) {
    const SuiteScoper<AEGP_UtilitySuite5> utility(basic, "AEGP Utility Suite", 11);
    const SuiteScoper<AEGP_MemorySuite1> memory(basic, "AEGP Memory Suite", 1);
    HostText error(memory); // not read; declared first so that it is freed after the result
    HostText result(memory);
    utility->AEGP_ExecuteScript(kNoPlugin, script, false, result.receive(), error.receive());
    const std::string_view resultText = result.lock();
    error.lock();
    return std::string(resultText);
}

std::string ScriptHelper::TrimStringWhiteSpaces(const std::string& text) {
    constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";
    const auto first = text.find_first_not_of(kWhiteSpace);
    if (first == std::string::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kWhiteSpace) - first + 1);
}

} // namespace Kerovane::Tesselune
